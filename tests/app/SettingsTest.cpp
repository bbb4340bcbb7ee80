#include "app/Settings.h"

#include "forms/QtText.h"
#include "model/KelError.h"
#include "support/Cases.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <memory>

namespace zem::test {
namespace {

class SettingsTest : public testing::Test {
protected:
    /// The settings as a new start of the program reads them.
    Settings& Read() {
        settings_ = std::make_unique<Settings>(store, "/opt/zem");
        settings_->LoadSettings();
        return *settings_;
    }
    void Set(const char* key, const char* value) { store.setValue(QLatin1String(key), QLatin1String(value)); }
    QString Get(const char* key) const { return store.value(QLatin1String(key)).toString(); }

    TempFolder folder;
    QSettings store{PathToQt(folder.Path("settings.ini")), QSettings::IniFormat};

private:
    std::unique_ptr<Settings> settings_;
};

TEST_F(SettingsTest, HaveDefaultsAndAreWrittenOnlyWhenTheyChange) {
    const Settings& settings = Read();
    EXPECT_FALSE(settings.IsVeldtInstalled());
    EXPECT_TRUE(settings.UseSpecialMsgBox());
    EXPECT_TRUE(settings.CurrentOptions().FriendlyScript);
    EXPECT_EQ(settings.CurrentOptions().MaxRecent, 8);
    EXPECT_EQ(settings.CurrentOptions().VCOMPILElocation, "/opt/zem/VCOMPILE.EXE");
    EXPECT_TRUE(settings.RecentFiles().isEmpty());
    EXPECT_TRUE(store.allKeys().isEmpty());
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
    Set("Init/InstalledVer", "No"); // only "no" in small letters means that it is missing
    EXPECT_TRUE(Settings(store, {}).IsVeldtInstalled());
}

TEST_F(SettingsTest, MoveARecentFileToTheTop) {
    Settings& settings = Read();
    for (const char* path : {"/a.kel", "/b.kel", "/c.kel"})
        settings.AddToRecentFiles(QLatin1String(path));
    settings.AddToRecentFiles("/A.KEL"); // the same but for capitals: the new spelling counts
    EXPECT_EQ(settings.RecentFiles().join(u' '), "/A.KEL /c.kel /b.kel");
    EXPECT_EQ(Get("Editor/NumberRecent"), "3");
    EXPECT_EQ(Read().RecentFiles().join(u' '), "/A.KEL /c.kel /b.kel");
}

TEST_F(SettingsTest, KeepAtMostMaxRecentFiles) {
    Settings& settings = Read();
    for (int k = 1; k <= 9; ++k)
        settings.AddToRecentFiles(QStringLiteral("/%1.kel").arg(k));
    EXPECT_EQ(settings.RecentFiles().size(), 8);
    EXPECT_EQ(settings.RecentFiles().constLast(), "/2.kel");
    EXPECT_FALSE(store.contains("Editor/Recent9"));

    // A lower maximum leaves the list alone until a file is added.
    Options options = settings.CurrentOptions();
    options.MaxRecent = 3;
    settings.StoreOptions(options);
    EXPECT_EQ(Get("Editor/NumberRecent"), "8");
    settings.AddToRecentFiles("/new.kel");
    EXPECT_EQ(settings.RecentFiles().join(u' '), "/new.kel /9.kel /8.kel");
    EXPECT_EQ(Get("Editor/NumberRecent"), "3");
    EXPECT_EQ(Get("Editor/Recent8"), "/2.kel") << "keys beyond the count stay";

    // A maximum of 0 keeps the stored list at start-up, but has no room for a new file.
    options.MaxRecent = 0;
    settings.StoreOptions(options);
    EXPECT_EQ(Read().RecentFiles().size(), 3);
    EXPECT_THROW(Read().AddToRecentFiles("/other.kel"), KelError);
    EXPECT_EQ(Get("Editor/NumberRecent"), "3");
    Set("Editor/MaxRecent", "2");
    EXPECT_EQ(Read().RecentFiles().size(), 2);
}

} // namespace
} // namespace zem::test
