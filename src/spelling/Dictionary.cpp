#include "spelling/Dictionary.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "base/TextFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <utility>

#if ZEM_HAS_HUNSPELL
#include <hunspell/hunspell.hxx>
#endif

namespace zem::spelling {

enum class WordEncoding { Utf8, Latin1, Latin15 };

namespace {

std::string NameOf(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

[[noreturn]] void Refuse(const std::string& path, const std::string& problem) {
    throw KelError("the dictionary " + NameOf(path) + " " + problem);
}

std::string ReadDictionaryFile(const std::string& path) {
    try {
        return ReadFile(path);
    } catch (const KelError& error) {
        Refuse(path, "cannot be read: " + error.Problem());
    }
}

/// Letters and digits of the name of an encoding, in small letters: "iso88591" for "ISO-8859-1".
std::string Bare(std::string_view name) {
    std::string bare;
    for (const char c : name)
        if ((Lower(c) >= 'a' && Lower(c) <= 'z') || IsDigit(c))
            bare += Lower(c);
    return bare;
}

/// What the first file says of the encoding of both.
WordEncoding ReadEncoding(const std::string& path, std::string_view bytes) {
    constexpr std::string_view Rules[] = {"SET", "TRY",  "FLAG",      "SFX", "PFX",
                                          "REP", "LANG", "WORDCHARS", "AF"};
    bool hasRules = false;
    std::string name = "ISO8859-1"; // of a file that does not tell
    while (!bytes.empty()) {
        std::string_view line = TakeLine(bytes);
        if (line.starts_with("\xEF\xBB\xBF"))
            line.remove_prefix(3);
        const std::string_view rule = line.substr(0, line.find_first_of(" \t"));
        hasRules = hasRules || std::find(std::begin(Rules), std::end(Rules), rule) != std::end(Rules);
        if (rule == "SET") {
            name = Trim(line.substr(3));
            break;
        }
    }
    if (!hasRules)
        Refuse(path, "is damaged: its rules cannot be read");
    const std::string bare = Bare(name);
    if (bare == "utf8")
        return WordEncoding::Utf8;
    if (bare == "iso88591")
        return WordEncoding::Latin1;
    if (bare == "iso885915")
        return WordEncoding::Latin15;
    Refuse(path, "is in the encoding " + ShowShortly(name) + ", which is not supported");
}

/// Some words of the second file, from all of it, as they stand there. Refuses a file that is no list of
/// words or whose end is missing.
std::vector<std::string> ReadSomeWords(const std::string& path, std::string_view bytes,
                                       WordEncoding encoding) {
    constexpr std::size_t Wanted = 40;
    if (bytes.find('\0') != std::string_view::npos)
        Refuse(path, "is damaged: it is no text");
    const TextEncoding found = DetectEncoding(bytes);
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return c >= 0; });
    if (encoding == WordEncoding::Utf8 && !isAscii && found != TextEncoding::Utf8 &&
        found != TextEncoding::Utf8WithMark)
        Refuse(path, "is damaged: it is not in UTF-8 although it says so");
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    const double told = LeadingReal(TakeLine(bytes));
    const auto lines = static_cast<double>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
    if (!(told >= 1))
        Refuse(path, "is damaged: it does not begin with the number of its words");
    if (lines < told * 0.9) // the number is a rough one
        Refuse(path, "is damaged: it ends too early");
    const auto step = static_cast<std::size_t>(lines) / Wanted + 1;
    std::vector<std::string> words;
    for (std::size_t number = 0; !bytes.empty(); ++number) {
        const std::string_view line = TakeLine(bytes);
        const std::string_view word = line.substr(0, line.find_first_of("/\t "));
        if (number % step == 0 && !word.empty())
            words.emplace_back(word);
    }
    return words;
}

/// The characters of ISO-8859-15 that are none of ISO-8859-1, as they are in Windows-1252.
constexpr std::array<std::pair<char, char>, 8> OfLatin15 = {{{'\x80', '\xA4'},
                                                             {'\x8A', '\xA6'},
                                                             {'\x9A', '\xA8'},
                                                             {'\x8E', '\xB4'},
                                                             {'\x9E', '\xB8'},
                                                             {'\x8C', '\xBC'},
                                                             {'\x9C', '\xBD'},
                                                             {'\x9F', '\xBE'}}};

/// The word as the dictionary holds it; nothing when it cannot.
std::optional<std::string> ToDictionary(std::string_view word, WordEncoding encoding) {
    std::string text;
    for (char c : word) {
        c = c == '\x92' ? '\'' : c; // authors write either
        const auto* found =
            std::find_if(OfLatin15.begin(), OfLatin15.end(), [c](auto pair) { return pair.first == c; });
        if (encoding == WordEncoding::Latin15 && found != OfLatin15.end())
            text += found->second;
        else if (encoding == WordEncoding::Latin1 && (c == '\x9C' || c == '\x8C'))
            text += c == '\x9C' ? "oe" : "OE"; // as such dictionaries spell it
        else if (encoding != WordEncoding::Utf8 && static_cast<unsigned char>(c) >= 0x80 &&
                 static_cast<unsigned char>(c) < 0xA0)
            return std::nullopt;
        else
            text += c;
    }
    return encoding == WordEncoding::Utf8 ? ToUtf8(text) : text;
}

/// A word of the dictionary; nothing for one that no game can hold.
std::optional<std::string> FromDictionary(std::string_view word, WordEncoding encoding) {
    if (encoding == WordEncoding::Utf8) {
        ConvertedText text = Utf8ToWindows1252(word);
        return text.lacking.empty() ? std::optional(std::move(text.bytes)) : std::nullopt;
    }
    std::string text(word);
    if (encoding == WordEncoding::Latin15)
        for (char& c : text)
            for (const auto& [windows, latin] : OfLatin15)
                if (c == latin) {
                    c = windows;
                    break;
                }
    return text;
}

} // namespace

#if ZEM_HAS_HUNSPELL

class Dictionary::Library {
public:
    Library(const std::string& aff, const std::string& dic, WordEncoding encoding)
        : checker_(aff.c_str(), dic.c_str()),
          encoding_(encoding) {}

    bool SpellsRaw(const std::string& word) { return checker_.spell(word); }

    bool Spells(std::string_view word) {
        const std::optional<std::string> raw = ToDictionary(word, encoding_);
        if (!raw)
            return true;
        const std::lock_guard<std::mutex> lock(mutex_);
        const auto [found, isNew] = known_.try_emplace(*raw, false);
        if (isNew)
            found->second = checker_.spell(*raw);
        return found->second;
    }

    std::vector<std::string> Suggest(std::string_view word) {
        const std::optional<std::string> raw = ToDictionary(word, encoding_);
        std::vector<std::string> words;
        if (!raw)
            return words;
        const std::lock_guard<std::mutex> lock(mutex_);
        for (const std::string& suggestion : checker_.suggest(*raw))
            if (std::optional<std::string> text = FromDictionary(suggestion, encoding_))
                words.push_back(*std::move(text));
        return words;
    }

private:
    std::mutex mutex_;
    Hunspell checker_;
    WordEncoding encoding_;
    std::unordered_map<std::string, bool> known_; // what was asked before
};

Dictionary::Dictionary(const std::string& affPath) {
    const std::string dicPath = std::filesystem::path(affPath).replace_extension(".dic").string();
    const WordEncoding encoding = ReadEncoding(affPath, ReadDictionaryFile(affPath));
    const std::vector<std::string> words = ReadSomeWords(dicPath, ReadDictionaryFile(dicPath), encoding);
    library_ = std::make_unique<Library>(affPath, dicPath, encoding);
    const auto spelled = std::count_if(words.begin(), words.end(),
                                       [&](const std::string& word) { return library_->SpellsRaw(word); });
    if (static_cast<std::size_t>(spelled) * 2 < words.size()) // some are no words without an ending
        Refuse(dicPath, "is damaged: it does not know its own words");
}

bool Dictionary::Spells(std::string_view word) const {
    return library_->Spells(word);
}

std::vector<std::string> Dictionary::Suggest(std::string_view word) const {
    return library_->Suggest(word);
}

#else

class Dictionary::Library {};

Dictionary::Dictionary(const std::string&) {
    throw KelError("this program was made without dictionaries");
}

bool Dictionary::Spells(std::string_view) const {
    return true;
}

std::vector<std::string> Dictionary::Suggest(std::string_view) const {
    return {};
}

#endif

Dictionary::~Dictionary() = default;

} // namespace zem::spelling
