#include "session/Settings.h"

#include "base/LineText.h"
#include "qt/QtText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace zem {

struct Settings::Key {
    const char* section;
    const char* key;
    const char* defaultText;
};

/// All settings of the program.
struct Settings::Keys {
    static constexpr Key InstalledVer{"Init", "InstalledVer", "no"}; // written by the game-running program
    static constexpr Key SpecialMsgBox{"Options", "SpecialMsgBox", "Yes"};
    static constexpr Key VCOMPILElocation{"Editor", "VCOMPILElocation", "/VCOMPILE.EXE"}; // see LoadSettings
    static constexpr Key RunProgram{"Editor", "RunProgram", ""};
    static constexpr Key Colours{"Editor", "Colours", "Desktop"};
    static constexpr Key FriendlyScript{"Editor", "FriendlyScript", "Yes"};
    static constexpr Key MaxRecent{"Editor", "MaxRecent", "8"};
    static constexpr Key NumberRecent{"Editor", "NumberRecent", "0"};
    static constexpr Key Recent{"Editor", "Recent", ""}; // followed by a number from 1
    static constexpr Key TagEditorWindowWidth{"Editor", "TagEditorWindowWidth", "6000"}; // twips
    static constexpr Key TagEditorWindowHeight{"Editor", "TagEditorWindowHeight", "6000"};
    static constexpr Key MainWindowGeometry{"Editor", "MainWindowGeometry", ""}; // in Base64
    static constexpr Key MainWindowState{"Editor", "MainWindowState", ""};       // in Base64
    static constexpr Key LetterSize{"Editor", "LetterSize", "100"};
    static constexpr Key RecentCommands{"Editor", "RecentCommands", ""}; // with blanks between them
    static constexpr Key ShownPanels{"Editor", "ShownPanels", ""};       // with blanks between them
    static constexpr Key Exports{"Editor", "Exports",
                                 ""}; // a line for a game, a line for its file, and so on
};

namespace {

constexpr qsizetype MostExports = 50; // games whose last export is known

/// In the order of Look.
constexpr const char* LookNames[] = {"Desktop", "Light", "Dark"};

QString NameInStore(const char* section, const char* key) {
    return QLatin1String(section) + u'/' + QLatin1String(key);
}

} // namespace

Settings::Settings(QSettings& store, const QString& programFolder)
    : store_(store),
      programFolder_(programFolder) {}

QString Settings::Read(const Key& key) const {
    return Read(key, QLatin1String(key.defaultText));
}

QString Settings::Read(const Key& key, const QString& defaultText) const {
    const QVariant value = store_.value(NameInStore(key.section, key.key), defaultText);
    // A text with commas that another program wrote without quotes comes back as a list.
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(QLatin1String(", "))
                                                    : value.toString();
}

std::int16_t Settings::ReadNumber(const Key& key) const {
    try {
        return LeadingNumber(Read(key).toStdString());
    } catch (const KelError& error) {
        throw KelError(std::string("the setting ") + key.key + " cannot be used: " + error.Problem());
    }
}

/// A length on a screen. What is no number counts as 0, and what no screen can have is cut.
int Settings::ReadTwips(const Key& key) const {
    return static_cast<int>(std::clamp(LeadingReal(Read(key).toStdString()), 0.0, 1e6));
}

QSize Settings::TagEditorSize() const {
    return {ReadTwips(Keys::TagEditorWindowWidth), ReadTwips(Keys::TagEditorWindowHeight)};
}

void Settings::StoreTagEditorSize(const QSize& twips) {
    Write(Keys::TagEditorWindowWidth, QString::number(twips.width()));
    Write(Keys::TagEditorWindowHeight, QString::number(twips.height()));
}

QByteArray Settings::MainWindowGeometry() const {
    return QByteArray::fromBase64(Read(Keys::MainWindowGeometry).toLatin1());
}

void Settings::StoreMainWindowGeometry(const QByteArray& geometry) {
    Write(Keys::MainWindowGeometry, QString::fromLatin1(geometry.toBase64()));
}

QByteArray Settings::MainWindowState() const {
    return QByteArray::fromBase64(Read(Keys::MainWindowState).toLatin1());
}

std::int16_t Settings::StoredLetterSize() const {
    constexpr int Smallest = 50;
    constexpr int Largest = 400;
    bool isNumber = false;
    const int stored = Read(Keys::LetterSize).toInt(&isNumber);
    return static_cast<std::int16_t>(isNumber ? std::clamp(stored, Smallest, Largest) : 100);
}

QStringList Settings::RecentCommands() const {
    return Read(Keys::RecentCommands).split(u' ', Qt::SkipEmptyParts);
}

void Settings::AddToRecentCommands(const QString& name) {
    constexpr qsizetype Most = 20;
    QStringList recent = RecentCommands();
    recent.removeAll(name);
    recent.prepend(name);
    Write(Keys::RecentCommands, recent.mid(0, Most).join(u' '));
}

QStringList Settings::ShownPanels() const {
    return Read(Keys::ShownPanels).split(u' ', Qt::SkipEmptyParts);
}

void Settings::StorePanels(const QByteArray& state, const QStringList& shown) {
    Write(Keys::MainWindowState, QString::fromLatin1(state.toBase64()));
    Write(Keys::ShownPanels, shown.join(u' '));
}

QString Settings::LastExport(const QString& game) const {
    const QStringList lines = Read(Keys::Exports).split(u'\n', Qt::SkipEmptyParts);
    for (qsizetype k = 0; k + 1 < lines.size(); k += 2)
        if (lines[k] == game)
            return lines[k + 1];
    return {};
}

void Settings::StoreLastExport(const QString& game, const QString& out) {
    if (game.isEmpty() || (game + out).contains(u'\n'))
        return; // a game without a file has no next time
    QStringList lines = {game, out};
    const QStringList old = Read(Keys::Exports).split(u'\n', Qt::SkipEmptyParts);
    for (qsizetype k = 0; k + 1 < old.size() && lines.size() < 2 * MostExports; k += 2)
        if (old[k] != game)
            lines += {old[k], old[k + 1]};
    Write(Keys::Exports, lines.join(u'\n'));
}

bool Settings::IsReadable() const {
    const QFileInfo file(store_.fileName());
    return !file.exists() || (file.isFile() && file.isReadable());
}

QString Settings::NewProblem() {
    if (isTold_)
        return {};
    const QString path = store_.fileName();
    const bool isDamaged = store_.status() == QSettings::FormatError;
    const QString aside = path + QLatin1String(".damaged");
    if (isDamaged) {
        QFile::remove(aside);
        QFile::copy(path, aside); // Before it is written anew
    }
    store_.sync();
    isTold_ = store_.status() != QSettings::NoError;
    if (isDamaged)
        return QStringLiteral(
                   "The settings file %1 is damaged. ZEM uses what can be read of it; the file as it "
                   "was is kept as %2.")
            .arg(path, aside);
    if (!isTold_)
        return {};
    return (IsReadable()
                ? QStringLiteral("The settings cannot be written to %1: what you set is good until "
                                 "ZEM ends.")
                : QStringLiteral("The settings file %1 cannot be read: ZEM uses the settings that it "
                                 "comes with, and what you set is good until it ends."))
        .arg(path);
}

void Settings::Write(const Key& key, const QString& value) {
    store_.setValue(NameInStore(key.section, key.key), value);
}

bool Settings::IsVeldtInstalled() const {
    return Read(Keys::InstalledVer) != QLatin1String("no");
}

Look Settings::StoredLook() const {
    const QString stored = Read(Keys::Colours).toLower();
    for (const Look look : {Look::Light, Look::Dark})
        if (stored == QString(QLatin1String(LookNames[static_cast<int>(look)])).toLower())
            return look;
    return Look::Desktop;
}

void Settings::LoadSettings() {
    useSpecialMsgBox_ = IsYes(Read(Keys::SpecialMsgBox).toStdString());
    // The only default that depends on where the program stands.
    const QString beside = programFolder_ + QLatin1String(Keys::VCOMPILElocation.defaultText);
    options_.VCOMPILElocation = Read(Keys::VCOMPILElocation, QDir::toNativeSeparators(beside));
    options_.RunProgram = Read(Keys::RunProgram);
    options_.Colours = StoredLook();
    options_.LetterSize = StoredLetterSize();
    options_.FriendlyScript = IsYes(Read(Keys::FriendlyScript).toStdString());
    options_.MaxRecent = ReadNumber(Keys::MaxRecent);
    int numberRecent = ReadNumber(Keys::NumberRecent);
    // A maximum of 0 keeps the stored list here, but not when a file is added.
    if (numberRecent > options_.MaxRecent && options_.MaxRecent != 0)
        numberRecent = options_.MaxRecent;
    recentFiles_.clear();
    for (int i = 1; i <= numberRecent; ++i) {
        const std::string key = Keys::Recent.key + std::to_string(i);
        recentFiles_.append(Read({Keys::Recent.section, key.c_str(), Keys::Recent.defaultText}));
    }
}

void Settings::StoreOptions(const Options& options) {
    options_ = options;
    Write(Keys::VCOMPILElocation, options.VCOMPILElocation);
    Write(Keys::RunProgram, options.RunProgram);
    Write(Keys::Colours, QLatin1String(LookNames[static_cast<int>(options.Colours)]));
    Write(Keys::LetterSize, QString::number(options.LetterSize));
    Write(Keys::FriendlyScript, QLatin1String(YesNoText(options.FriendlyScript)));
    Write(Keys::MaxRecent, QString::number(options.MaxRecent));
}

void Settings::AddToRecentFiles(const QString& path) {
    const QString lowered = path.toLower();
    qsizetype found = -1; // the last one counts
    for (qsizetype i = 0; i < recentFiles_.size(); ++i)
        if (recentFiles_[i].toLower() == lowered)
            found = i;
    if (found >= 0) {
        recentFiles_.removeAt(found);
    } else {
        const qsizetype most = options_.MaxRecent;
        if (most < 1) {
            recentFiles_.clear();
            throw KelError(
                "the list of recent files has no room for a first entry, because its maximum in the "
                "options is below 1");
        }
        while (recentFiles_.size() >= most)
            recentFiles_.removeLast();
    }
    recentFiles_.prepend(path);
    Write(Keys::NumberRecent, QString::number(recentFiles_.size()));
    for (qsizetype i = 0; i < recentFiles_.size(); ++i) {
        const std::string key = Keys::Recent.key + std::to_string(i + 1);
        Write({Keys::Recent.section, key.c_str(), ""}, recentFiles_[i]);
    }
}

} // namespace zem
