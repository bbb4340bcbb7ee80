#include "session/StateFolder.h"

#include <QDir>
#include <QStandardPaths>

namespace zem {

QString StateFolder() {
#ifdef Q_OS_UNIX
    const QString named = qEnvironmentVariable("XDG_STATE_HOME");
    const QString states =
        QDir::isAbsolutePath(named) ? named : QDir::homePath() + QLatin1String("/.local/state");
    return states + QLatin1String("/zem");
#else
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
#endif
}

} // namespace zem
