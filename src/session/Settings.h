#pragma once

#include "qt/Look.h"

#include <QByteArray>
#include <QSettings>
#include <QSize>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace zem {

/// What the options window edits.
struct Options {
    QString VCOMPILElocation;
    QString RunProgram; // runs the games; empty for the one that the desktop has for them
    Look Colours = Look::Desktop;
    bool FriendlyScript = true;    // scripts are shown in plain English
    std::int16_t LetterSize = 100; // in per cent of the desktop's, 50 to 400
    std::int16_t MaxRecent = 8;    // the most entries of the list of recent files
};

/// The per-user settings, which are shared with the game-running program. They are read once, at start-up;
/// afterwards the values here are the truth, and a change is stored when it is made.
class Settings {
public:
    /// @param store  outlives this object
    /// @param programFolder  without a trailing separator
    Settings(QSettings& store, const QString& programFolder);

    /// Reads every setting. Throws KelError for a number beyond 16 bits; what was read before it stays.
    void LoadSettings();

    /// Makes sure that the settings are on the disk. What is wrong with their file, as a sentence for the
    /// author: the first time that it is found; empty otherwise. A damaged file is kept beside it as it was.
    QString NewProblem();

    /// Whether the game-running program has left its version.
    bool IsVeldtInstalled() const;

    /// The colours to start with, known before the other settings are read.
    Look StoredLook() const;

    /// Whether messages use the editor's own window instead of the platform's.
    bool UseSpecialMsgBox() const { return useSpecialMsgBox_; }

    const Options& CurrentOptions() const { return options_; }
    void StoreOptions(const Options& options);

    /// Paths of the games opened and saved last, the latest first.
    const QStringList& RecentFiles() const { return recentFiles_; }

    /// Puts a path on top of the recent files, in its given spelling, and stores the list; paths that differ
    /// only in capitals count as one. Throws KelError when the list may hold no entry at all.
    void AddToRecentFiles(const QString& path);

    /// The size in twips, fifteenths of a device-independent pixel, in which the tag editor opens.
    QSize TagEditorSize() const;
    void StoreTagEditorSize(const QSize& twips);

    /// Size and place of the main window as QWidget::saveGeometry tells them; empty if none were stored.
    QByteArray MainWindowGeometry() const;
    void StoreMainWindowGeometry(const QByteArray& geometry);

    /// Where its panels stand as QMainWindow::saveState tells it, and the commands of those that are shown;
    /// both empty if none were stored.
    QByteArray MainWindowState() const;
    QStringList ShownPanels() const;
    void StorePanels(const QByteArray& state, const QStringList& shown);

    /// The size of the letters in per cent, known before the other settings are read.
    std::int16_t StoredLetterSize() const;

    /// The object names of the commands that were chosen by typing, the latest first.
    QStringList RecentCommands() const;
    void AddToRecentCommands(const QString& name);

    /// The file to which a game was exported last; empty for none.
    /// @param game  the path of its file
    QString LastExport(const QString& game) const;
    void StoreLastExport(const QString& game, const QString& out);

private:
    struct Key;
    struct Keys;

    QString Read(const Key& key) const;
    QString Read(const Key& key, const QString& defaultText) const;
    std::int16_t ReadNumber(const Key& key) const;
    int ReadTwips(const Key& key) const;
    void Write(const Key& key, const QString& value);

    bool IsReadable() const;

    QSettings& store_;
    QString programFolder_;
    bool useSpecialMsgBox_ = true;
    Options options_;
    QStringList recentFiles_;
    bool isTold_ = false; // that something is wrong with the file
};

} // namespace zem
