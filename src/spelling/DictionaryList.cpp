#include "spelling/DictionaryList.h"

#include "base/LineText.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <system_error>

namespace zem::spelling {

namespace {

/// "en" of "en_GB".
std::string_view WithoutCountry(std::string_view language) {
    return language.substr(0, language.find_first_of("_-"));
}

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

void AddFolder(const std::string& folder, std::map<std::string, std::string>& found) {
    std::error_code error;
    std::filesystem::directory_iterator files(folder, error);
    if (error)
        return; // most of the folders are nowhere
    for (const std::filesystem::directory_iterator end; files != end; files.increment(error)) {
        const std::filesystem::path& path = files->path();
        const std::string language = path.stem().string();
        if (path.extension() == ".aff" && !language.starts_with("hyph_") &&
            std::filesystem::exists(std::filesystem::path(path).replace_extension(".dic"), error))
            found.emplace(language, path.string());
        if (error)
            return;
    }
}

} // namespace

std::vector<std::string> DictionaryFolders() {
    const std::string named = Environment("DICPATH");
    std::vector<std::string> folders;
    for (const std::string_view folder : SplitAt(named, ":"))
        if (!folder.empty())
            folders.emplace_back(folder);
    for (const char* folder : {"/usr/share/hunspell", "/usr/share/myspell/dicts", "/usr/share/myspell"})
        folders.emplace_back(folder);
    return folders;
}

std::vector<InstalledDictionary> ListDictionaries(const std::vector<std::string>& folders) {
    std::map<std::string, std::string> found;
    for (const std::string& folder : folders)
        AddFolder(folder, found);
    std::vector<InstalledDictionary> installed;
    for (const auto& [language, path] : found)
        installed.push_back({language, path});
    return installed;
}

std::string LanguageOfDesktop() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const std::string value = Environment(name);
        const std::string language = value.substr(0, value.find_first_of(".@"));
        if (!language.empty())
            return language == "C" || language == "POSIX" ? "en" : language;
    }
    return "en";
}

const InstalledDictionary* FindDictionary(const std::vector<InstalledDictionary>& installed,
                                          std::string_view language) {
    const auto find = [&](auto fits) {
        const auto found = std::find_if(installed.begin(), installed.end(), fits);
        return found == installed.end() ? nullptr : &*found;
    };
    const auto* own =
        find([&](const InstalledDictionary& one) { return EqualIgnoringCase(one.language, language); });
    if (own != nullptr || language.empty())
        return own;
    return find([&](const InstalledDictionary& one) {
        return EqualIgnoringCase(WithoutCountry(one.language), WithoutCountry(language));
    });
}

std::string TellNoDictionary(const std::vector<InstalledDictionary>& installed, std::string_view language) {
    if (installed.empty())
        return "No dictionary is installed, so words are not checked. Dictionaries come with the system: "
               "install "
               "one for hunspell, such as hunspell-en-gb.";
    std::string text =
        "No dictionary for " + std::string(language) + " is installed, so words are not checked. There ";
    text += installed.size() == 1 ? "is one for " : "are some for ";
    for (const InstalledDictionary& one : installed)
        text += (&one == &installed.front() ? "" : ", ") + one.language;
    return text + ".";
}

} // namespace zem::spelling
