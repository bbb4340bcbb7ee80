// What comes from other programs and goes to them: dropped files, the program that runs games, the colours.
#include "forms/Icons.h"
#include "forms/Palettes.h"
#include "support/Cases.h"
#include "support/Contrast.h"
#include "support/SmallGame.h"
#include "windows/frmOptions.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDropEvent>
#include <QMimeData>
#include <QStyle>

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// Drags the URLs over the widget and lets them go where they are accepted.
bool Drop(QWidget& widget, const QStringList& urls) {
    QMimeData data;
    data.setUrls(QUrl::fromStringList(urls));
    QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&widget, &enter);
    if (!enter.isAccepted())
        return false;
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    QDropEvent drop({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    drop.setDropAction(Qt::MoveAction); // as a file manager likes to propose
    QApplication::sendEvent(&widget, &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    QCoreApplication::processEvents();
    return drop.isAccepted();
}

QString Url(const std::string& path) {
    return QUrl::fromLocalFile(PathToQt(path)).toString(QUrl::FullyEncoded);
}

TEST(Drop, OpensTheFirstFileInBothWindowsAndAsksFirst) {
    RunningProgram p;
    const std::string first = p.folder.Write("a b & c%20.kel", Small);
    const std::string second = p.folder.Write("second.kel", Small);
    p.Start();
    for (const QStringList& refused :
         {QStringList{}, QStringList{"https://example.org/a.kel"}, QStringList{Url(p.folder.Path(""))},
          QStringList{Url(p.folder.Path("gone.kel"))}})
        EXPECT_FALSE(Drop(*p.program->StartWindow(), refused)) << refused.join(u' ').toStdString();
    EXPECT_TRUE(Drop(*p.program->StartWindow(), {Url(first), Url(second)}));
    EXPECT_FALSE(p.program->StartWindow()->isVisible());
    EXPECT_EQ(p.game.FileName, first);

    DeleteRoom(p, 0);
    for (const auto& [answer, opened] : {std::pair(QMessageBox::Cancel, first), {QMessageBox::No, second}}) {
        p.dialogs.Message(UnsavedQuestion, answer);
        EXPECT_TRUE(Drop(*p.Main(), {Url(second)}));
        EXPECT_EQ(p.game.FileName, opened);
    }
    p.Open<frmOptions>("mnuViewOptions", [&](auto&) { EXPECT_FALSE(Drop(*p.Main(), {Url(first)})); });
}

/// Sets the box for the program in the options window and presses OK.
void NameProgram(const RunningProgram& p, const QString& name, bool isStored = true) {
    p.Open<frmOptions>("mnuViewOptions", [&](frmOptions& form) {
        Find<QLineEdit>(form, "txtRunner").setText(name);
        Click(form, "butOK");
        EXPECT_EQ(form.isVisible(), !isStored) << name.toStdString();
    });
}

TEST(Run, StartsTheNamedProgramWithTheFileAsItsOneArgument) {
    RunningProgram p;
    const std::string script = p.folder.Write("it's \"odd\" $HOME", R"(#!/bin/sh
        printf '%s|' "$#" "$@" >"$0.new" && mv "$0.new" "$0.out")");
    const std::string output = script + ".out";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    const std::string game = p.folder.Write("a 'b' \"c\"; $(d) --e.kel", Small);
    p.Start(PathToQt(game));

    const QString notThere = QStringLiteral(
        "ZEM: There is no program %1, or it is not marked as executable. Choose another one, or "
        "leave the box empty to use the program that the desktop has for .kel files.");
    for (const QString& bad :
         {p.Path("gone"), PathToQt(game), p.Path(""), QStringLiteral("no such program")}) {
        p.dialogs.Message(notThere.arg(bad));
        NameProgram(p, bad, false);
    }
    NameProgram(p, QStringLiteral(" %1 ").arg(PathToQt(script)));
    p.dialogs.Program(PathToQt(script));
    p.Trigger("mnuFileRunKELfile");
    ASSERT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(output); }));
    EXPECT_EQ(ReadBytes(output), "1|" + game + "|");

    std::filesystem::remove(script);
    p.dialogs.Program(PathToQt(script));
    p.dialogs.Message(QStringLiteral("ZEM: The program that runs games, %1, cannot be started. Please name "
                                     "another one in the options (Options in the Edit menu).")
                          .arg(PathToQt(script)));
    p.Trigger("mnuFileRunKELfile");
    NameProgram(p, PathToQt(script)); // as it was: no reason to hold up the other options
    NameProgram(p, QString());
    p.dialogs.Document(PathToQt(game), 33); // the desktop's own again
    p.Trigger("mnuFileRunKELfile");
}

TEST(Run, TakesTheNamedProgramThenTheOneBesideThisOneThenThatOfTheDesktop) {
    RunningProgram p(Small);
    const QString game = p.Path("game.kel");
    const auto makeProgram = [&p](const char* name) {
        std::filesystem::permissions(p.folder.Write(name, "#!/bin/sh\n"), std::filesystem::perms::owner_all);
        return p.Path(name);
    };
    p.dialogs.Document(game, 33);
    p.Trigger("mnuFileRunKELfile");
    p.folder.Write("program/veldt", "not executable");
    p.dialogs.Document(game, 33);
    p.Trigger("mnuFileRunKELfile");
    p.dialogs.Program(makeProgram("program/veldt"));
    p.Trigger("mnuFileRunKELfile");
    NameProgram(p, makeProgram("named"));
    p.dialogs.Program(p.Path("named"));
    p.Trigger("mnuFileRunKELfile");
    const QString itself = QCoreApplication::applicationFilePath();
    NameProgram(p, itself);
    p.dialogs.Message(QStringLiteral("ZEM: The program that runs games, %1, cannot be started. Please name "
                                     "another one in the options (Options in the Edit menu).")
                          .arg(itself));
    p.Trigger("mnuFileRunKELfile");
}

/// Takes the place of the desktop's way to open files.
class FileOpener : public QObject {
    Q_OBJECT

public:
    FileOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Open"); }
    ~FileOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QStringList opened;

public slots:
    void Open(const QUrl& url) { opened.append(url.toLocalFile()); }
};

TEST(Run, AsksTheDesktopWhetherItHasAProgramThatIsThere) {
    const TempFolder folder;
    const QByteArray path = qgetenv("PATH");
    std::filesystem::create_directories(folder.Path("applications"));
    std::filesystem::permissions(
        folder.Write("xdg-mime", "#!/bin/sh\ncat \"" + folder.Path("answer") + "\" 2>/dev/null\n"),
        std::filesystem::perms::owner_all);
    qputenv("PATH", QByteArray::fromStdString(folder.Path("")) + ':' + path);
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(folder.Path("")));
    FileOpener opener;
    const QString game = PathToQt(folder.Write("game.kel", Small));
    const std::string itself = PathFromQt(QCoreApplication::applicationFilePath());
    for (const auto& [entry, program, result] : Cases<const char*, std::string, int>{
             {"", "", Dialogs::NoAssociation},
             {"gone.desktop", "", Dialogs::NoAssociation},
             {"uninstalled.desktop", "/gone/veldt", Dialogs::NoAssociation},
             {"zem.desktop", "/bin/true", Dialogs::NoAssociation},
             {"editor.desktop", itself, Dialogs::NoAssociation},
             {"good.desktop", "\"/bin/true\"", Dialogs::Opened},
         }) {
        folder.Write("answer", entry);
        if (!program.empty())
            folder.Write(std::string("applications/") + entry,
                         "[Desktop Entry]\nName=x\nExec=" + program + " %f\n");
        EXPECT_EQ(QtDialogs().OpenDocument(game), result) << entry;
        EXPECT_EQ(opener.opened, result == Dialogs::Opened ? QStringList{game} : QStringList()) << entry;
    }
    qputenv("PATH", path);
    qunsetenv("XDG_DATA_HOME");
}

/// The colour of an image that differs most from the background.
double BestContrast(const QImage& image, const QColor& background) {
    double best = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() == 255)
                best = std::max(best, Contrast(image.pixelColor(x, y), background));
    return best;
}

TEST(Colours, ChangeAtOnceAreKeptAndCanBeSeen) {
    const QPalette before = QApplication::palette();
    const QString styleBefore = QApplication::style()->name();
    const QIcon icon = ThemedIcon(QStringLiteral("butSave"));
    for (const auto& [choice, stored] : {std::pair(2, "Dark"), {1, "Light"}, {2, "Dark"}}) {
        RunningProgram p(Small);
        p.Open<frmOptions>("mnuViewOptions", [row = choice](frmOptions& form) {
            Find<QComboBox>(form, "cmbLook").setCurrentIndex(row);
            Click(form, "butOK");
        });
        EXPECT_EQ(p.store.value(QStringLiteral("Editor/Colours")).toString(), QLatin1String(stored));
        QCoreApplication::processEvents(); // the windows hear of it then
        const QPalette palette = p.Main()->palette();
        const QColor window = palette.color(QPalette::Window);
        EXPECT_EQ(Luminance(window) < 0.2, choice == 2);
        const std::pair<QPalette::ColorRole, std::vector<QPalette::ColorRole>> readable[] = {
            {QPalette::Window, {QPalette::WindowText}},
            {QPalette::Base,
             {QPalette::Text, QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited}},
            {QPalette::AlternateBase, {QPalette::Text}},
            {QPalette::Button, {QPalette::ButtonText}},
            {QPalette::Highlight, {QPalette::HighlightedText}},
            {QPalette::ToolTipBase, {QPalette::ToolTipText}},
        };
        for (const auto& [ground, texts] : readable)
            for (const auto text : texts)
                for (const auto& [group, least] :
                     {std::pair(QPalette::Active, 4.5), {QPalette::Disabled, 3.0}})
                    EXPECT_GE(Contrast(palette.color(group, text), palette.color(group, ground)), least)
                        << stored << group << text;
        EXPECT_GE(BestContrast(icon.pixmap(24).toImage(), window), 4.5) << "an icon made before";
        auto* box = new QCheckBox(p.Main()); // which the window owns
        box->resize(box->sizeHint());
        EXPECT_GE(BestContrast(box->grab().toImage(), window), 3.0) << stored << " check box";

        ApplyLook(Look::Desktop);
        p.Start(); // anew
        EXPECT_EQ(QApplication::palette().color(QPalette::Window), window);
    }
    ApplyLook(Look::Desktop);
    EXPECT_EQ(QApplication::palette(), before);
    EXPECT_EQ(QApplication::style()->name(), styleBefore);
}

} // namespace
} // namespace zem::test

#include "OutsideWorldTest.moc"
