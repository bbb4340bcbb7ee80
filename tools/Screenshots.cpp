// Takes a picture of every window of the program: Screenshots FOLDER light|dark
#include "forms/Icons.h"
#include "support/EveryWindow.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <cstdio>

namespace {

/// The program's icon in the sizes in which desktops show it.
QPixmap IconSizes() {
    QPixmap picture(300, 140);
    picture.fill(QApplication::palette().color(QPalette::Window));
    QPainter painter(&picture);
    int x = 8;
    for (const int size : {128, 64, 32, 16}) {
        zem::ThemedIcon(QStringLiteral("zem")).paint(&painter, x, 6, size, size);
        x += size + 8;
    }
    return picture;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("Screenshots FOLDER light|dark\n", stderr);
        return 2;
    }
    const QApplication application(argc, argv);
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const QTemporaryDir games;
    const QString game = games.filePath(QStringLiteral("lighthouse.kel"));
    bool isSaved = folder.mkpath(QStringLiteral(".")) &&
                   QFile::copy(QStringLiteral(ZEM_SAMPLES "/lighthouse.kel"), game);
    const auto save = [&](const QString& name, const QPixmap& picture) {
        isSaved = picture.save(folder.filePath(name + QLatin1String(".png"))) && isSaved;
    };
    zem::test::ForEachWindow(
        game, [&](const QString& name, QWidget& window) { save(name, window.grab()); },
        QString::fromLocal8Bit(argv[2]));
    save(QStringLiteral("icon"), IconSizes());
    if (!isSaved)
        std::fprintf(stderr, "not every picture could be written to %s\n", argv[1]);
    return isSaved ? 0 : 1;
}
