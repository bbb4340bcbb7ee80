#pragma once

#include "editors/frmTextSectionEdit.h"
#include "forms/PlainTextBox.h"
#include "game/Notes.h"
#include "session/GameSpelling.h"
#include "support/RunningProgram.h"

#include <cstdlib>
#include <functional>
#include <set>
#include <string>

namespace zem::test {

/// The program in a language of the tests.
struct Writing : RunningProgram {
    explicit Writing(const char* language = "en_XX.UTF-8", const char* folder = ZEM_TEST_DATA "/spelling") {
        setenv("DICPATH", folder, 1);
        setenv("LC_ALL", language, 1);
    }
    ~Writing() {
        unsetenv("DICPATH");
        unsetenv("LC_ALL");
    }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

    GameSpelling& Spelling() const { return program->Spelling(); }

    /// The words beside the game.
    std::set<std::string> Words() const { return LoadNotes(folder.Path("game.kel")).words; }

    /// Works in the editor of texts, on "intro".
    void InTexts(const std::function<void(frmTextSectionEdit&, PlainTextBox&)>& use) {
        Open<frmTextSectionEdit>("mnuViewTextSectionEditor", [&](frmTextSectionEdit& form) {
            auto& box = test::Find<PlainTextBox>(form, "txtText");
            box.setFocus();
            use(form, box);
        });
    }
};

/// The words of a box with a wavy line, or what is dim in it.
inline QStringList Marked(const PlainTextBox& box, bool unknown = true) {
    QStringList marked;
    for (const QTextEdit::ExtraSelection& selection : box.extraSelections())
        if ((selection.format.underlineStyle() == QTextCharFormat::WaveUnderline) == unknown)
            marked.append(selection.cursor.selectedText());
    return marked;
}

inline void WaitForMarks(const PlainTextBox& box, const QStringList& expected) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Marked(box) == expected; }, 10000))
        << Marked(box).join(u' ').toStdString() << " and not " << expected.join(u' ').toStdString();
}

} // namespace zem::test
