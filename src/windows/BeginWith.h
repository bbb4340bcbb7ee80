#pragma once

#include <QString>

#include <vector>

namespace zem {

/// A game that an author may begin with.
struct GameToBegin {
    QString title;
    QString about; // in a sentence
    QString path;
    bool isTemplate = false; // made to be changed, not to be played
};

/// The templates, then the samples, as far as they are there.
/// @param programFolder  where the templates are; the samples are there or where a package puts them
std::vector<GameToBegin> GamesToBegin(const QString& programFolder);

} // namespace zem
