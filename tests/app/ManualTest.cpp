#include "app/frmManual.h"
#include "app/frmOptions.h"
#include "editors/frmRoomProperties.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <QDirIterator>
#include <QInputDialog>
#include <QLabel>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QWindow>

#include <gtest/gtest.h>

namespace zem {
namespace {

QString ReadManual() {
    QFile file(QStringLiteral(ZEM_PROGRAM_FOLDER "/ZEM.HTM"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

/// What the pattern's group finds in the manual.
QStringList Matches(const QString& pattern) {
    QStringList found;
    const QString manual = ReadManual();
    for (const QRegularExpressionMatch& match : QRegularExpression(pattern).globalMatch(manual))
        found.append(match.captured(1));
    return found;
}

QString PlaceShown(const test::RunningProgram& p) {
    const frmManual* manual = p.program->ManualWindow();
    return manual == nullptr || !manual->isVisible()
               ? QString()
               : test::Find<QTextBrowser>(*manual, "txtManual").source().fragment();
}

void PressF1(QWidget& window) {
    QTest::keyClick(window.focusWidget() == nullptr ? &window : window.focusWidget(), Qt::Key_F1);
}

TEST(Manual, HasAPlaceForEveryWindow) {
    QDirIterator forms(QStringLiteral(ZEM_SOURCES), {QStringLiteral("*.ui")}, QDir::Files,
                       QDirIterator::Subdirectories);
    ASSERT_TRUE(forms.hasNext());
    const QStringList places = Matches(QStringLiteral("id=\"([^\"]+)\""));
    while (forms.hasNext()) {
        forms.next();
        const QString name = forms.fileInfo().completeBaseName();
        EXPECT_EQ(places.count(name), 1) << name.toStdString();
    }
}

TEST(Manual, HasNoDeadLinksAndAWordForEveryPicture) {
    const QStringList places = Matches(QStringLiteral("id=\"([^\"]+)\""));
    for (const QString& link : Matches(QStringLiteral("href=\"#([^\"]+)\"")))
        EXPECT_TRUE(places.contains(link)) << "no place " << link.toStdString();
    const QStringList pictures = Matches(QStringLiteral("<img src=\"([^\"]+)\" alt=\"[^\"]{20,}\">"));
    EXPECT_EQ(pictures.size(), Matches(QStringLiteral("(<img)")).size());
    const QDir folder(QStringLiteral(ZEM_PROGRAM_FOLDER));
    for (const QString& file : pictures + Matches(QStringLiteral("href=\"([^#\"]+)\"")))
        EXPECT_TRUE(folder.exists(file)) << "no file " << file.toStdString();
}

TEST(Manual, F1OpensThePageOfTheWindow) {
    test::RunningProgram p;
    p.StartWith(test::EditorGame());
    PressF1(*p.Main());
    EXPECT_EQ(PlaceShown(p), QStringLiteral("frmMain"));
    test::WhenOpen<frmOptions>([&](frmOptions& form) {
        PressF1(form);
        EXPECT_EQ(PlaceShown(p), QStringLiteral("frmOptions"));
    });
    p.Trigger("mnuViewOptions");
    EXPECT_TRUE(p.program->ManualWindow()->isVisible()); // it outlives the window that it was opened from
}

TEST(Manual, F1OpensThePageThatIsShownAndThatOfTheWindowBehindAnInputBox) {
    test::RunningProgram p;
    p.StartWith(test::EditorGame());
    p.Select("lstRooms", 0);
    test::WhenOpen<frmRoomProperties>([&](frmRoomProperties& form) {
        PressF1(form);
        EXPECT_EQ(PlaceShown(p), QStringLiteral("frmRoomProperties-Details"));
        test::Click(form, "butExits");
        QInputDialog box(&form);
        box.show();
        PressF1(box);
        EXPECT_EQ(PlaceShown(p), QStringLiteral("frmRoomProperties-Exits"));
    });
    p.Click("butEditRoom");
}

/// Clicks a button as the platform does it, which asks whether a modal window locks it out.
void PlatformClick(const QWidget& window, const char* button) {
    const auto& control = test::Find<QPushButton>(window, button);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      control.mapTo(&window, control.rect().center()));
}

TEST(Manual, CanBeUsedWhileAModalWindowIsOpen) {
    test::RunningProgram p;
    p.StartWith(test::EditorGame());
    PressF1(*p.Main()); // before the modal window is there
    const frmManual& manual = *p.program->ManualWindow();
    p.Select("lstRooms", 0);
    test::WhenOpen<frmRoomProperties>([&](frmRoomProperties& form) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        PlatformClick(manual, "butContents");
        EXPECT_EQ(PlaceShown(p), QString());
        PlatformClick(manual, "butBack");
        EXPECT_EQ(PlaceShown(p), QStringLiteral("frmMain"));
    });
    p.Click("butEditRoom");
    p.program->ManualWindow()->showMinimized();
    PressF1(*p.Main());
    EXPECT_FALSE(manual.isMinimized());
}

TEST(Manual, FindsFromTheTopAgainAndOpensOtherDocumentsByTheDesktop) {
    test::RunningProgram p;
    p.StartWith(test::EditorGame());
    PressF1(*p.Main());
    const frmManual& manual = *p.program->ManualWindow();
    auto& page = test::Find<QTextBrowser>(manual, "txtManual");
    auto& text = test::Find<QLineEdit>(manual, "txtFind");
    page.moveCursor(QTextCursor::End);
    QTest::keyClicks(&text, QStringLiteral("takes ten minutes"));
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(page.textCursor().selectedText(), QStringLiteral("takes ten minutes"));
    EXPECT_EQ(test::Find<QLabel>(manual, "lblFound").text(), QString());
    QTest::keyClicks(&text, QStringLiteral("qqq"));
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(test::Find<QLabel>(manual, "lblFound").text(), QStringLiteral("Not found."));

    p.dialogs.Document(QStringLiteral(ZEM_PROGRAM_FOLDER "/KEL.HTM"), 33);
    emit page.anchorClicked(QUrl::fromLocalFile(QStringLiteral(ZEM_PROGRAM_FOLDER "/KEL.HTM")));
}

TEST(Manual, ThatIsMissingIsTold) {
    test::RunningProgram p;
    QFile::copy(p.programFolder + QStringLiteral("/zem.dat"), p.Path("zem.dat"));
    QFile::copy(p.programFolder + QStringLiteral("/zemerr.dat"), p.Path("zemerr.dat"));
    p.programFolder = p.Path(".");
    p.Start();
    const QString file = p.Path(".") + QStringLiteral("/ZEM.HTM");
    p.dialogs.Message(
        QStringLiteral("ZEM: The manual cannot be shown: there is no file %1, or it cannot be read.")
            .arg(file));
    PressF1(*p.program->StartWindow());
    p.dialogs.ExpectAllAsked();
    EXPECT_EQ(PlaceShown(p), QString());
    ASSERT_TRUE(QFile::copy(QStringLiteral(ZEM_PROGRAM_FOLDER "/ZEM.HTM"), file));
    PressF1(*p.program->StartWindow());
    EXPECT_EQ(PlaceShown(p), QStringLiteral("frmStart"));
}

} // namespace
} // namespace zem
