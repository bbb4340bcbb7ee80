#include "forms/ActionRanking.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zem {

namespace {

constexpr double OfTitle = 3;
constexpr double OfWords = 2.6; // of another word for it
constexpr double OfWhere = 1;
constexpr double WholePhrase = 2; // everything typed is one of the phrases, in any order
constexpr double PriceOfStrayWord = 0.5;
constexpr double GiftForUsed = 0.3;

/// Words that everybody types and that tell nothing apart.
const QSet<QString>& SmallWords() {
    static const QSet<QString> words = {
        QStringLiteral("a"),     QStringLiteral("an"),     QStringLiteral("the"),    QStringLiteral("to"),
        QStringLiteral("of"),    QStringLiteral("in"),     QStringLiteral("on"),     QStringLiteral("my"),
        QStringLiteral("i"),     QStringLiteral("do"),     QStringLiteral("how"),    QStringLiteral("can"),
        QStringLiteral("want"),  QStringLiteral("is"),     QStringLiteral("are"),    QStringLiteral("it"),
        QStringLiteral("this"),  QStringLiteral("that"),   QStringLiteral("for"),    QStringLiteral("me"),
        QStringLiteral("with"),  QStringLiteral("need"),   QStringLiteral("please"), QStringLiteral("some"),
        QStringLiteral("and"),   QStringLiteral("at"),     QStringLiteral("be"),     QStringLiteral("what"),
        QStringLiteral("where"), QStringLiteral("all"),    QStringLiteral("does"),   QStringLiteral("get"),
        QStringLiteral("into"),  QStringLiteral("from"),   QStringLiteral("am"),     QStringLiteral("there"),
        QStringLiteral("too"),   QStringLiteral("so"),     QStringLiteral("very"),   QStringLiteral("would"),
        QStringLiteral("like"),  QStringLiteral("should"), QStringLiteral("now"),    QStringLiteral("just")};
    return words;
}

QStringList WordsOf(const QString& text) {
    QStringList words;
    QString word;
    for (const QChar letter : text.toLower().normalized(QString::NormalizationForm_D)) {
        if (letter.isMark())
            continue;
        if (letter.isLetterOrNumber())
            word.append(letter);
        else if (letter != u'\'' && letter != u'&' && !word.isEmpty())
            words.append(std::exchange(word, {}));
    }
    if (!word.isEmpty())
        words.append(word);
    return words;
}

/// The words that tell something; all of them where none does.
QStringList TellingWords(const QString& text) {
    const QStringList all = WordsOf(text);
    QStringList telling;
    std::copy_if(all.begin(), all.end(), std::back_inserter(telling),
                 [](const QString& word) { return !SmallWords().contains(word); });
    return telling.isEmpty() ? all : telling;
}

/// "renaming" and "renames" without their endings.
QString Stem(const QString& word) {
    for (const char* ending : {"ings", "ing", "ies", "ied", "es", "ed", "er", "s", "e", "y"}) {
        const QLatin1String end(ending);
        if (word.size() - end.size() >= 3 && word.endsWith(end)) {
            QString stem = word.chopped(end.size());
            if (stem.size() > 3 && stem.back() == stem[stem.size() - 2]) // "cutting"
                stem.chop(1);
            return stem;
        }
    }
    return word;
}

/// Whether one letter more, less or another, or two letters that changed places, make the one of the other.
bool IsOneSlip(const QString& typed, const QString& word) {
    if (typed.size() < 4 || std::abs(typed.size() - word.size()) > 1)
        return false;
    const auto different = std::mismatch(typed.begin(), typed.end(), word.begin(), word.end());
    const QString::const_iterator a = different.first;
    const QString::const_iterator b = different.second;
    if (a == typed.end() || b == word.end())
        return true;
    const auto isRest = [&](qsizetype skipA, qsizetype skipB) {
        return std::equal(a + std::min<std::ptrdiff_t>(skipA, std::distance(a, typed.end())), typed.end(),
                          b + std::min<std::ptrdiff_t>(skipB, std::distance(b, word.end())), word.end());
    };
    const bool isSwapped = std::distance(a, typed.end()) > 1 && std::distance(b, word.end()) > 1 &&
                           *a == *(b + 1) && *(a + 1) == *b && isRest(2, 2);
    return isSwapped || isRest(1, 1) || isRest(1, 0) || isRest(0, 1);
}

double FitOfWord(const QString& typed, const QString& word) {
    if (typed == word)
        return 1;
    if (Stem(typed) == Stem(word))
        return 0.9;
    if (word.startsWith(typed)) // half typed
        return typed.size() > 1 ? 0.75 : 0.4;
    if (typed.size() >= 3 && word.contains(typed))
        return 0.4;
    return IsOneSlip(typed, word) ? 0.6 : 0;
}

QString AsPhrase(QStringList words) {
    for (QString& word : words)
        word = Stem(word);
    words.sort();
    return words.join(u' ');
}

} // namespace

ActionRanking::ActionRanking(const std::vector<Findable>& all) {
    for (const Findable& each : all) {
        Entry entry;
        const auto add = [&entry](const QString& text, double weight) {
            for (const QString& word : WordsOf(text))
                entry.words.push_back({word, weight});
        };
        add(each.title, OfTitle);
        add(each.words, OfWords);
        add(each.where, OfWhere);
        add(each.keys, OfWhere);
        entry.phrases.append(AsPhrase(TellingWords(each.title)));
        for (const QString& phrase : each.words.split(u';', Qt::SkipEmptyParts))
            entry.phrases.append(AsPhrase(TellingWords(phrase)));
        entry.lastUsed = each.lastUsed;
        entry.isUsable = each.whyNot.isEmpty();
        entries_.push_back(std::move(entry));
    }
}

double ActionRanking::Fit(const QString& word, const Entry& entry) const {
    double best = 0;
    for (const auto& [text, weight] : entry.words)
        if (best < weight)
            best = std::max(best, weight * FitOfWord(word, text));
    return best;
}

std::vector<int> ActionRanking::ByUse() const {
    std::vector<int> order(entries_.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [this](int a, int b) {
        return entries_[static_cast<std::size_t>(a)].lastUsed >
               entries_[static_cast<std::size_t>(b)].lastUsed;
    });
    return order;
}

std::vector<int> ActionRanking::Fitting(const QString& typed) const {
    const QStringList words = TellingWords(typed);
    if (words.isEmpty())
        return ByUse();
    std::vector<double> scores(entries_.size(), 0);
    for (const QString& word : words) {
        std::vector<double> fits(entries_.size());
        double fitting = 0;
        for (std::size_t k = 0; k < entries_.size(); ++k) {
            fits[k] = Fit(word, entries_[k]);
            fitting += fits[k] > OfWords / 2 ? 1 : 0;
        }
        // A word that few have says more than one that stands everywhere.
        const double rarity = std::log(2 + static_cast<double>(entries_.size()) / (1 + fitting));
        for (std::size_t k = 0; k < entries_.size(); ++k)
            scores[k] += rarity * (fits[k] > 0 ? fits[k] : -PriceOfStrayWord);
    }
    const QString phrase = AsPhrase(words);
    std::vector<int> order;
    for (std::size_t k = 0; k < entries_.size(); ++k) {
        if (scores[k] <= 0)
            continue;
        if (entries_[k].phrases.contains(phrase))
            scores[k] += WholePhrase * OfTitle;
        scores[k] += entries_[k].lastUsed > 0 ? GiftForUsed : 0;
        scores[k] -= entries_[k].isUsable ? 0 : GiftForUsed;
        order.push_back(static_cast<int>(k));
    }
    std::stable_sort(order.begin(), order.end(), [&scores](int a, int b) {
        return scores[static_cast<std::size_t>(a)] > scores[static_cast<std::size_t>(b)];
    });
    return order;
}

} // namespace zem
