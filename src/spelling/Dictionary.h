#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zem::spelling {

/// The words of a language, from a pair of files as spelling checkers on the desktop share them. Words go in
/// and come out in Windows-1252, whatever the files are in. May be asked from several threads.
class Dictionary {
public:
    /// Reads NAME.aff and NAME.dic. Throws KelError, which names the file and what is wrong, when one is
    /// missing or damaged, is in an encoding other than UTF-8, ISO-8859-1 and ISO-8859-15, or when this
    /// program was made without dictionaries.
    explicit Dictionary(const std::string& affPath);
    ~Dictionary();
    Dictionary(const Dictionary&) = delete;
    Dictionary& operator=(const Dictionary&) = delete;

    /// Whether the word is in the dictionary, in any of its forms. What the dictionary's encoding cannot hold
    /// is not held against a word.
    bool Spells(std::string_view word) const;

    /// Words that may have been meant, the likeliest first. May take a tenth of a second.
    std::vector<std::string> Suggest(std::string_view word) const;

private:
    class Library;

    std::unique_ptr<Library> library_;
};

} // namespace zem::spelling
