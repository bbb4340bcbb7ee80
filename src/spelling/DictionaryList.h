#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The dictionaries that are installed.
namespace zem::spelling {

struct InstalledDictionary {
    std::string language; // its short name: "en_GB"
    std::string affPath;  // of the first of its two files
};

/// The folders in which desktops keep dictionaries; first those that the environment names in DICPATH.
std::vector<std::string> DictionaryFolders();

/// The dictionaries in the folders, by language. Where two folders have one, the first counts.
std::vector<InstalledDictionary> ListDictionaries(const std::vector<std::string>& folders);

/// The desktop's language, as the environment tells it: "en_GB", or "en" where it tells none.
std::string LanguageOfDesktop();

/// The dictionary for a language: its own, or that of the same language elsewhere ("en_US" for "en_GB").
/// Null when there is none.
const InstalledDictionary* FindDictionary(const std::vector<InstalledDictionary>& installed,
                                          std::string_view language);

/// A sentence for the author about a language without a dictionary.
std::string TellNoDictionary(const std::vector<InstalledDictionary>& installed, std::string_view language);

} // namespace zem::spelling
