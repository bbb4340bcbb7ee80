#include "app/Settings.h"

#include "forms/QtText.h"
#include "model/KelError.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <memory>

namespace zem {
namespace {

class SettingsTest : public testing::Test {
protected:
    /// The settings as a new start of the program reads them.
    Settings& Read() {
        settings_ = std::make_unique<Settings>(store, QStringLiteral("/opt/zem"));
        settings_->LoadSettings();
        return *settings_;
    }
    void Set(const char* key, const char* value) { store.setValue(QLatin1String(key), QLatin1String(value)); }
    QString Get(const char* key) const { return store.value(QLatin1String(key)).toString(); }

    test::TempFolder folder;
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
    EXPECT_EQ(settings.CurrentOptions().VCOMPILElocation, QStringLiteral("/opt/zem/VCOMPILE.EXE"));
    EXPECT_TRUE(settings.RecentFiles().isEmpty());
    EXPECT_TRUE(store.allKeys().isEmpty());
}

TEST_F(SettingsTest, ReadWordsAndNumbersLeniently) {
    for (const char* yes : {"Yes", "YES", "yes"}) {
        Set("Options/SpecialMsgBox", yes);
        Set("Editor/FriendlyScript", yes);
        EXPECT_TRUE(Read().UseSpecialMsgBox() && Read().CurrentOptions().FriendlyScript) << yes;
    }
    for (const char* no : {"Y", "1", "true", "", "No"}) {
        Set("Options/SpecialMsgBox", no);
        Set("Editor/FriendlyScript", no);
        EXPECT_FALSE(Read().UseSpecialMsgBox() || Read().CurrentOptions().FriendlyScript) << no;
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
    settings.AddToRecentFiles(QStringLiteral("/A.KEL")); // the same but for capitals: the new spelling counts
    EXPECT_EQ(settings.RecentFiles().join(u' '), QStringLiteral("/A.KEL /c.kel /b.kel"));
    EXPECT_EQ(Get("Editor/NumberRecent"), QStringLiteral("3"));
    EXPECT_EQ(Read().RecentFiles().join(u' '), QStringLiteral("/A.KEL /c.kel /b.kel"));
}

TEST_F(SettingsTest, KeepAtMostMaxRecentFiles) {
    Settings& settings = Read();
    for (int k = 1; k <= 9; ++k)
        settings.AddToRecentFiles(QStringLiteral("/%1.kel").arg(k));
    EXPECT_EQ(settings.RecentFiles().size(), 8);
    EXPECT_EQ(settings.RecentFiles().constLast(), QStringLiteral("/2.kel"));
    EXPECT_FALSE(store.contains(QStringLiteral("Editor/Recent9")));

    // A lower maximum leaves the list alone until a file is added.
    Options options = settings.CurrentOptions();
    options.MaxRecent = 3;
    settings.StoreOptions(options);
    EXPECT_EQ(Get("Editor/NumberRecent"), QStringLiteral("8"));
    settings.AddToRecentFiles(QStringLiteral("/new.kel"));
    EXPECT_EQ(settings.RecentFiles().join(u' '), QStringLiteral("/new.kel /9.kel /8.kel"));
    EXPECT_EQ(Get("Editor/NumberRecent"), QStringLiteral("3"));
    EXPECT_EQ(Get("Editor/Recent8"), QStringLiteral("/2.kel")) << "keys beyond the count stay";

    // A maximum of 0 keeps the stored list at start-up, but has no room for a new file.
    options.MaxRecent = 0;
    settings.StoreOptions(options);
    EXPECT_EQ(Read().RecentFiles().size(), 3);
    EXPECT_THROW(Read().AddToRecentFiles(QStringLiteral("/other.kel")), KelError);
    EXPECT_EQ(Get("Editor/NumberRecent"), QStringLiteral("3"));
    Set("Editor/MaxRecent", "2");
    EXPECT_EQ(Read().RecentFiles().size(), 2);
}

} // namespace
} // namespace zem
