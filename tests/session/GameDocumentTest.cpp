// The commands on the file of the game, and what keeps the author's work meanwhile, without a window.
#include "session/GameDocument.h"

#include "qt/CommandError.h"
#include "qt/QtText.h"
#include "session/GameMerge.h"
#include "session/Recovery.h"
#include "session/SaveCheck.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/RecordingHost.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QtTest/QTest>

#include <deque>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace zem::test {
namespace {

/// Answers from a script, and fails for what is not in it.
class ScriptedQuestions : public Questions {
public:
    std::deque<std::string> script; // "title: answer", "save: path"
    QStringList told;

    ~ScriptedQuestions() override { EXPECT_TRUE(script.empty()) << "never asked: " << script.front(); }
    Answer Ask(const QString& /*text*/, const QString& title, Buttons /*buttons*/) override {
        const std::string answer = Next(title.toStdString());
        return answer == "yes" ? Answer::Yes : answer == "no" ? Answer::No : Answer::Cancel;
    }
    int AskChoice(const QString& /*text*/, const QString& title, const QStringList& choices) override {
        const auto answer = QString::fromStdString(Next(title.toStdString()));
        return static_cast<int>(choices.indexOf(answer));
    }
    void Tell(const QString& text) override { told.append(text); }
    QString AskOpenName(const QString& /*currentFile*/) override {
        return QString::fromStdString(Next("open"));
    }
    QString AskSaveName(const QString& /*currentFile*/) override {
        return QString::fromStdString(Next("save"));
    }
    void ShowDifferences(const QString& /*file*/) override { Next("differences"); }

private:
    std::string Next(const std::string& question) {
        if (script.empty() || !script.front().starts_with(question + ": ")) {
            ADD_FAILURE() << "not in the script: " << question;
            return {};
        }
        const std::string answer = script.front().substr(question.size() + 2);
        script.pop_front();
        return answer;
    }
};

/// The program without its windows, from its start to its end.
struct Sitting {
    explicit Sitting(const TempFolder& folder)
        : store(PathToQt(folder.Path("settings.ini")), QSettings::IniFormat),
          versions(PathToQt(folder.Path("state/versions"))),
          recovery(session, edits, PathToQt(folder.Path("state/recovery"))) {
        settings.LoadSettings();
    }
    void AddRoom() {
        session.Change([](GameModel& model) { model.Rooms.Append().Name = "Cellar"; });
    }
    int Foreign() const {
        int count = 0;
        for (const FileVersion& version : versions.List(session.FileName()))
            count += version.kind == VersionKind::Foreign ? 1 : 0;
        return count;
    }

    QSettings store;
    RecordingHost host;
    Settings settings{store, {}};
    GameModel game;
    GameSession session{game, host, settings};
    OpenEdits edits{session};
    Versions versions;
    SaveCheck check{session, versions};
    Recovery recovery;
    ScriptedQuestions questions;
    GameMerge merge{session};
    GameDocument file{session, check, merge, questions};
};

const char* const Tower = "define game <Tower>\nstart <Hall>\nend define\ndefine room <Hall>\nend define\n";

class GameDocumentTest : public testing::Test {
protected:
    std::vector<RecoveryCopy> Abandoned() const {
        Sitting next(folder);
        QStringList damaged;
        return next.recovery.Abandoned(damaged);
    }
    mode_t Mode(const QString& path) const {
        return static_cast<mode_t>(std::filesystem::status(PathFromQt(path)).permissions());
    }

    TempFolder folder;
    QString path = PathToQt(folder.Write("tower.kel", Tower));
};

TEST_F(GameDocumentTest, LeavesTheRecoveryCopyOfAGameThatTheAuthorWantedSaved) {
    for (const auto& [answer, name, copies] : Cases<const char*, const char*, std::size_t>{
             {"Game not saved: no", nullptr, 0},
             {"Game not saved: yes", "", 1},
             {"Game not saved: yes", "saved.kel", 0},
         }) {
        {
            Sitting run(folder);
            run.AddRoom();
            run.questions.script = {answer};
            if (name != nullptr)
                run.questions.script.push_back("save: " + (*name == '\0' ? "" : folder.Path(name)));
            run.recovery.WriteNow();
            EXPECT_TRUE(run.file.MayLeave());
        }
        std::vector<RecoveryCopy> left = Abandoned();
        EXPECT_EQ(left.size(), copies) << answer;
        for (RecoveryCopy& copy : left)
            Recovery::Discard(copy);
    }
    { // The author changes his mind, and saves after all.
        Sitting run(folder);
        run.AddRoom();
        run.questions.script = {"Game not saved: yes",
                                "save: ", "open: ", "save: " + folder.Path("saved.kel")};
        run.file.Open();
        run.file.Save();
    }
    EXPECT_TRUE(Abandoned().empty());
}

TEST_F(GameDocumentTest, KeepsTheGameThatAFailedLoadHasEmptied) {
    const QString bad = PathToQt(folder.Write("bad.kel", "define game <x>\nstart Hall\nend define\n"));
    Sitting run(folder);
    EXPECT_THROW(run.file.Open(bad), CommandError);
    EXPECT_EQ(run.session.LostGame(), nullptr) << "there was none";
    run.file.Open(path);
    run.session.AsOneStep("add room", [&] { run.AddRoom(); });
    run.questions.script = {"Game not saved: no"};
    EXPECT_THROW(run.file.Open(bad), CommandError);
    EXPECT_EQ(run.game.Rooms.Count(), 0);
    EXPECT_TRUE(run.game.FileName.empty());
    EXPECT_EQ(QDir(PathToQt(folder.Path("state/recovery"))).entryList({"*.recovery"}).size(), 1)
        << "a crash must not take it now";
    run.file.BringBack();
    EXPECT_EQ(run.game.Rooms.Count(), 2);
    EXPECT_EQ(run.session.FileName(), path);
    EXPECT_TRUE(run.game.Modified);
    run.session.GoToStep(0);
    EXPECT_EQ(run.game.Rooms.Count(), 1);
    EXPECT_FALSE(run.game.Modified);

    // Whoever goes on with another game loses the offer and not the copy.
    run.session.GoToStep(1);
    run.questions.script = {"Game not saved: no"};
    EXPECT_THROW(run.file.Open(bad), CommandError);
    run.AddRoom();
    run.recovery.WriteNow();
    EXPECT_EQ(Abandoned().size(), 1U);
}

TEST_F(GameDocumentTest, KeepsWhatAnotherProgramWroteBeforeItIsReplaced) {
    folder.Write("tower.kel", std::string("' my tower\nnotes\n") + Tower);
    const std::string before = ReadBytes(PathFromQt(path));
    Sitting run(folder);
    std::vector<DroppedLines> dropped;
    QObject::connect(&run.check, &SaveCheck::LinesDropped,
                     [&](const DroppedLines& lines) { dropped.push_back(lines); });
    run.file.Open(path);
    for (int save = 0; save < 2; ++save) {
        run.file.Save();
        EXPECT_EQ(run.Foreign(), 1) << "the second save replaces a version of ours";
        EXPECT_EQ(dropped.size(), 1U);
    }
    EXPECT_EQ(dropped.front().comments, 1U);
    EXPECT_EQ(dropped.front().others, 1U);
    EXPECT_EQ(ReadBytes(PathFromQt(run.versions.List(path).back().path)), before);

    folder.Write("tower.kel", Tower);
    QTest::qWait(2); // versions are named after their time
    run.questions.script = {"File changed: &Keep mine"};
    run.file.Save();
    EXPECT_EQ(run.Foreign(), 2);
    EXPECT_EQ(dropped.size(), 1U);
}

TEST_F(GameDocumentTest, AsksBeforeItReplacesAFileThatHeldNoGame) {
    const std::string notes = "Buy milk.\n";
    const QString file = PathToQt(folder.Write("notes.kel", notes));
    Sitting run(folder);
    run.file.Open(file);
    EXPECT_FALSE(run.session.IsFileAGame());
    run.questions.script = {"No game in this file: "};
    run.file.Save();
    EXPECT_EQ(ReadBytes(PathFromQt(file)), notes);
    run.questions.script = {"No game in this file: &Replace it"};
    run.file.Save();
    EXPECT_NE(ReadBytes(PathFromQt(file)), notes);
    run.file.Save(); // which is a game now
    EXPECT_EQ(run.Foreign(), 1);
}

TEST_F(GameDocumentTest, ReadsUtf8WhenItIsAskedTo) {
    folder.Write("tower.kel", "\xEF\xBB\xBF"
                              "define game <Caf\xC3\xA9 \xE2\x98\xBA>\nend define\n");
    Sitting run(folder);
    run.file.Open(path);
    EXPECT_EQ(run.game.GameName, "") << "the mark hides the block";
    run.session.ReadAsUtf8();
    EXPECT_EQ(run.game.GameName, "Caf\xE9 ?");
    EXPECT_EQ(run.session.FileName(), path);
    EXPECT_TRUE(run.game.Modified);
}

TEST_F(GameDocumentTest, TellsThatOpenWillRefuseAName) {
    for (const auto& [name, tells] :
         Cases<const char*, bool>{{"a.txt", true}, {"b.kel", false}, {"c.KEL", false}, {"kel", true}}) {
        Sitting run(folder);
        run.questions.script = {"save: " + folder.Path(name)};
        run.file.SaveAs();
        EXPECT_EQ(run.questions.told.join("").contains(name), tells) << name;
    }
}

TEST_F(GameDocumentTest, ShowsCopiesToTheirOwnerOnlyAndClearsUpAfterAKill) {
    const mode_t mask = umask(0);
    std::filesystem::create_directories(folder.Path("state/versions"));
    {
        Sitting run(folder);
        run.file.Open(path);
        run.file.Save();
        run.AddRoom();
        run.recovery.WriteNow();
        for (const char* state : {"state/recovery", "state/versions"}) {
            QDir tree(PathToQt(folder.Path(state)));
            EXPECT_EQ(Mode(tree.path()), 0700U) << state;
            while (!tree.entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty()) {
                tree.cd(tree.entryList(QDir::Dirs | QDir::NoDotAndDotDot).constFirst());
                EXPECT_EQ(Mode(tree.path()), 0700U);
            }
            const QFileInfoList copies = tree.entryInfoList({"*.kel", "*.recovery"}, QDir::Files);
            EXPECT_FALSE(copies.isEmpty());
            for (const QFileInfo& copy : copies)
                EXPECT_EQ(Mode(copy.filePath()), 0600U) << copy.filePath().toStdString();
        }
    }
    umask(mask);
    const std::string killed = folder.Write("state/recovery/x.recovery.lock", "99999999\nzem\n\n");
    const std::string half = folder.Write("state/recovery/x.recovery.new", "half a copy");
    EXPECT_TRUE(Abandoned().empty());
    EXPECT_FALSE(std::filesystem::exists(killed));
    EXPECT_FALSE(std::filesystem::exists(half));
}

} // namespace
} // namespace zem::test
