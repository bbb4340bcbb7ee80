#include "session/Companions.h"

#include "base/KelError.h"
#include "base/TextFile.h"
#include "commands/FollowRename.h"
#include "files/FileBytes.h"
#include "files/ReplaceFile.h"
#include "game/Notes.h"
#include "qt/QtText.h"
#include "writer/OutputFile.h"

#include <QFileInfo>

namespace zem {

QString TakeAlong(const QString& from, const QString& to) {
    QString left;
    for (std::string (*pathOf)(const std::string&) : {RunsPath, NotesPath}) {
        const std::string source = pathOf(PathFromQt(from));
        const std::string target = pathOf(PathFromQt(to));
        if (!QFileInfo::exists(PathToQt(source)) || HaveSameBytes(source, target))
            continue;
        try {
            const std::string bytes = ReadFile(source);
            ReplaceFile(target, [&](const std::string& file) {
                OutputFile output(file);
                output.Write(bytes);
                output.Close();
            });
        } catch (const KelError& error) {
            left += QStringLiteral("%1 was not taken along: %2. ")
                        .arg(QFileInfo(PathToQt(source)).fileName(), ToQt(error.ProblemWithText()));
        }
    }
    return left.trimmed();
}

} // namespace zem
