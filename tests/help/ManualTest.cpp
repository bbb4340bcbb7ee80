#include "editors/frmRoomProperties.h"
#include "help/frmManual.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "windows/frmOptions.h"

#include <QDirIterator>
#include <QInputDialog>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBrowser>
#include <QWindow>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// What the pattern's group finds in the manual.
QStringList Matches(const char* pattern) {
    QStringList found;
    const QString manual = QString::fromStdString(ReadBytes(ZEM_PROGRAM_FOLDER "/ZEM.HTM"));
    for (const QRegularExpressionMatch& match : QRegularExpression(pattern).globalMatch(manual))
        found.append(match.captured(1));
    return found;
}

TEST(Manual, HasAPlaceForEveryWindowAndLinkAndAWordForEveryPicture) {
    const QStringList places = Matches("id=\"([^\"]+)\"");
    QDirIterator forms(ZEM_SOURCES, {"*.ui"}, QDir::Files, QDirIterator::Subdirectories);
    ASSERT_TRUE(forms.hasNext());
    while (forms.hasNext()) {
        const QString name = QFileInfo(forms.next()).completeBaseName();
        EXPECT_EQ(places.count(name), 1) << name.toStdString();
    }
    for (const QString& link : Matches("href=\"#([^\"]+)\""))
        EXPECT_TRUE(places.contains(link)) << "no place " << link.toStdString();
    const QStringList pictures = Matches("<img src=\"([^\"]+)\" alt=\"[^\"]{20,}\">");
    EXPECT_EQ(pictures.size(), Matches("(<img)").size());
    for (const QString& file : pictures + Matches("href=\"([^#\"]+)\""))
        EXPECT_TRUE(QDir(ZEM_PROGRAM_FOLDER).exists(file)) << "no file " << file.toStdString();
}

/// The place of the manual that F1 in the window leads to; nothing when the manual is not shown.
QString PlaceAfterF1(const RunningProgram& p, QWidget& window) {
    QTest::keyClick(window.focusWidget() == nullptr ? &window : window.focusWidget(), Qt::Key_F1);
    const frmManual* manual = p.program->ManualWindow();
    return manual == nullptr || !manual->isVisible()
               ? QString()
               : Find<QTextBrowser>(*manual, "txtManual").source().fragment();
}

/// The place of the manual after a click as the platform does it, which asks whether a modal window locks the
/// manual out.
QString PlaceAfterClick(const RunningProgram& p, const char* button) {
    const frmManual& manual = *p.program->ManualWindow();
    const auto& control = Find<QPushButton>(manual, button);
    QTest::mouseClick(manual.windowHandle(), Qt::LeftButton, {},
                      control.mapTo(&manual, control.rect().center()));
    return Find<QTextBrowser>(manual, "txtManual").source().fragment();
}

TEST(Manual, F1OpensThePageOfWhatIsShownWhichCanBeUsedBesideAnyWindow) {
    RunningProgram p(EditorGame());
    p.Select("lstRooms", 0);
    p.Open<frmRoomProperties>("butEditRoom", [&](frmRoomProperties& form) {
        EXPECT_EQ(PlaceAfterF1(p, form), "frmRoomProperties-Details");
        EXPECT_EQ(PlaceAfterClick(p, "butContents"), "");
        Click(form, "butExits");
        QInputDialog box(&form); // It has no page of its own.
        box.show();
        EXPECT_EQ(PlaceAfterF1(p, box), "frmRoomProperties-Exits");
    });
    EXPECT_TRUE(p.program->ManualWindow()->isVisible()) << "it outlives the window that it was opened from";
    EXPECT_EQ(PlaceAfterF1(p, *p.Main()), "frmMain");
    p.Open<frmOptions>("mnuViewOptions", [&](frmOptions& form) { // The manual is open already.
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return form.isActiveWindow(); }));
        EXPECT_EQ(PlaceAfterClick(p, "butContents"), "");
        EXPECT_EQ(PlaceAfterClick(p, "butBack"), "frmMain");
        EXPECT_EQ(PlaceAfterF1(p, form), "frmOptions");
    });
    p.program->ManualWindow()->showMinimized();
    EXPECT_EQ(PlaceAfterF1(p, *p.Main()), "frmMain");
    EXPECT_FALSE(p.program->ManualWindow()->isMinimized());
}

TEST(Manual, NeverHasToBeScrolledSideways) {
    ScriptedDialogs dialogs;
    frmManual manual(ZEM_PROGRAM_FOLDER "/ZEM.HTM", dialogs);
    manual.show();
    const auto& page = Find<QTextBrowser>(manual, "txtManual");
    for (const int width : {780, 460, 1200}) {
        manual.resize(width, 500);
        EXPECT_TRUE(QTest::qWaitFor([&] { return page.horizontalScrollBar()->maximum() == 0; })) << width;
    }
}

TEST(Manual, FindsFromTheTopAgainAndOpensOtherDocumentsByTheDesktop) {
    RunningProgram p(EditorGame());
    PlaceAfterF1(p, *p.Main());
    const frmManual& manual = *p.program->ManualWindow();
    auto& page = Find<QTextBrowser>(manual, "txtManual");
    page.moveCursor(QTextCursor::End);
    for (const auto& [text, result] : {std::pair("takes ten minutes", ""), {"qqq", "Not found."}}) {
        SetText(manual, "txtFind", "");
        TypeText(manual, "txtFind", text);
        PressKey(manual, "txtFind", Qt::Key_Return);
        EXPECT_EQ(TextOf(manual, "lblFound"), result);
        EXPECT_EQ(page.textCursor().selectedText(), "takes ten minutes");
    }
    p.dialogs.Document(ZEM_PROGRAM_FOLDER "/KEL.HTM", 33);
    emit page.anchorClicked(QUrl::fromLocalFile(ZEM_PROGRAM_FOLDER "/KEL.HTM"));
}

} // namespace
} // namespace zem::test
