#include "session/Settings.h"

#include "base/KelError.h"
#include "qt/QtText.h"
#include "support/Cases.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

#include <gtest/gtest.h>
#include <optional>

namespace zem::test {
namespace {

class SettingsTest : public testing::Test {
protected:
    /// The settings as the program reads them at its start.
    Settings& Read() {
        settings.LoadSettings();
        return settings;
    }
    void Set(const char* key, const char* value) { store.setValue(QLatin1String(key), QLatin1String(value)); }
    std::string Get(const char* key) const {
        return store.value(QLatin1String(key)).toString().toStdString();
    }

    TempFolder folder;
    QSettings store{PathToQt(folder.Path("settings.ini")), QSettings::IniFormat};
    Settings settings{store, "/opt/zem"};
};

TEST_F(SettingsTest, HaveDefaultsAndAreWrittenOnlyWhenTheyChange) {
    Read();
    EXPECT_FALSE(settings.IsVeldtInstalled());
    EXPECT_TRUE(settings.UseSpecialMsgBox());
    EXPECT_TRUE(settings.CurrentOptions().FriendlyScript);
    EXPECT_EQ(settings.CurrentOptions().MaxRecent, 8);
    EXPECT_EQ(settings.CurrentOptions().VCOMPILElocation, "/opt/zem/VCOMPILE.EXE");
    EXPECT_TRUE(settings.RecentFiles().isEmpty());
    EXPECT_TRUE(store.allKeys().isEmpty());
}

TEST(SettingsFile, SaysOnceWhatIsWrongWithIt) {
    for (const auto& [state, said] : Cases<const char*, const char*>{{"good", ""},
                                                                     {"damaged", "is damaged"},
                                                                     {"folder", "cannot be read"},
                                                                     {"locked", "cannot be written"}}) {
        const TempFolder folder;
        const std::string path = folder.Path("settings.ini");
        const std::string bytes = std::string("[Editor]\nMaxRecent=3\n") + (*state == 'd' ? "half a li" : "");
        if (*state == 'f')
            std::filesystem::create_directory(path);
        else
            folder.Write("settings.ini", bytes);
        if (*state == 'l') {
            std::filesystem::permissions(path, std::filesystem::perms(0444));
            std::filesystem::permissions(folder.Folder(), std::filesystem::perms(0555));
        }
        std::optional<Unprivileged> unprivileged;
        if (*state == 'l')
            unprivileged.emplace();
        QSettings store(PathToQt(path), QSettings::IniFormat);
        Settings settings(store, {});
        settings.LoadSettings();
        settings.StoreOptions(settings.CurrentOptions());
        const QString problem = settings.NewProblem();
        EXPECT_EQ(problem.isEmpty(), *said == '\0') << state << problem.toStdString();
        EXPECT_TRUE(problem.contains(QLatin1String(said))) << problem.toStdString();
        EXPECT_EQ(settings.NewProblem(), "") << state;
        EXPECT_EQ(settings.CurrentOptions().MaxRecent, *state == 'f' ? 8 : 3) << state;
        if (*state == 'd') {
            EXPECT_EQ(ReadBytes(path + ".damaged"), bytes);
        }
    }
}

TEST_F(SettingsTest, ReadWordsAndNumbersLeniently) {
    for (const auto& [word, isYes] : Cases<const char*, bool>{{"YES", true}, {"No", false}, {"1", false}}) {
        Set("Options/SpecialMsgBox", word);
        Set("Editor/FriendlyScript", word);
        EXPECT_EQ(Read().UseSpecialMsgBox(), isYes) << word;
        EXPECT_EQ(Read().CurrentOptions().FriendlyScript, isYes) << word;
    }
    Set("Editor/MaxRecent", "5 files");
    EXPECT_EQ(Read().CurrentOptions().MaxRecent, 5);
    Set("Editor/MaxRecent", "many");
    EXPECT_EQ(Read().CurrentOptions().MaxRecent, 0);
    Set("Editor/MaxRecent", "40000");
    EXPECT_THROW(Read(), KelError);
    Set("Init/InstalledVer", "No"); // Only "no" in small letters means that it is missing.
    EXPECT_TRUE(Settings(store, {}).IsVeldtInstalled());
}

TEST_F(SettingsTest, KeepEachRecentFileOnceAndAtMostMaxRecentOfThem) {
    Read();
    const auto recent = [this] {
        return Read().RecentFiles().join(u' ').toStdString() + ", stored: " + Get("Editor/NumberRecent");
    };
    for (const char* path :
         {"/a.kel", "/b.kel", "/c.kel", "/A.KEL"}) // The last differs from the first in capitals alone.
        settings.AddToRecentFiles(QLatin1String(path));
    EXPECT_EQ(recent(), "/A.KEL /c.kel /b.kel, stored: 3");
    for (int k = 1; k <= 6; ++k)
        settings.AddToRecentFiles(QStringLiteral("/%1.kel").arg(k));
    EXPECT_EQ(recent(), "/6.kel /5.kel /4.kel /3.kel /2.kel /1.kel /A.KEL /c.kel, stored: 8");
    EXPECT_FALSE(store.contains("Editor/Recent9"));

    // A lower maximum leaves the list alone until a file is added.
    Options options = settings.CurrentOptions();
    options.MaxRecent = 3;
    settings.StoreOptions(options);
    EXPECT_EQ(Get("Editor/NumberRecent"), "8");
    settings.AddToRecentFiles("/new.kel");
    EXPECT_EQ(recent(), "/new.kel /6.kel /5.kel, stored: 3");
    EXPECT_EQ(Get("Editor/Recent8"), "/c.kel") << "keys beyond the count stay";

    // A maximum of 0 keeps the stored list at start-up, but has no room for a new file.
    Set("Editor/MaxRecent", "0");
    EXPECT_EQ(recent(), "/new.kel /6.kel /5.kel, stored: 3");
    EXPECT_THROW(settings.AddToRecentFiles("/other.kel"), KelError);
    EXPECT_EQ(Get("Editor/NumberRecent"), "3");
    Set("Editor/MaxRecent", "2");
    EXPECT_EQ(recent(), "/new.kel /6.kel, stored: 3");
}

} // namespace
} // namespace zem::test
