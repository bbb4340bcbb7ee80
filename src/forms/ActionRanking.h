#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// Which of many commands an author means who types a few everyday words.
namespace zem {

/// Something that can be looked for by any words.
struct Findable {
    QString title;       // as it is shown; an "&" in it is a letter
    QString where;       // "Tools", "Manual", "Options"
    QString keys;        // "Ctrl+Z"; empty for none
    QString words;       // other words for it, phrases with ";" between them
    QString whyNot = {}; // it cannot be used now; empty when it can
    int lastUsed = 0;    // 0 for never, the last one the highest
};

/// Ranks the same list again and again, once for each key that is typed.
class ActionRanking {
public:
    explicit ActionRanking(const std::vector<Findable>& all);

    /// The numbers of those that fit the typed words, the best first; all of them for no words, what was used
    /// last first.
    std::vector<int> Fitting(const QString& typed) const;

private:
    struct Word {
        QString text;
        double weight;
    };
    struct Entry {
        std::vector<Word> words; // of the title, of other words, of where it stands
        QStringList phrases;     // the title and each of the other phrases, without small words
        int lastUsed = 0;
        bool isUsable = true;
    };

    double Fit(const QString& word, const Entry& entry) const;
    std::vector<int> ByUse() const;

    std::vector<Entry> entries_;
};

} // namespace zem
