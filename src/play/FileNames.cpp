#include "play/FileNames.h"

#include "base/LineText.h"

#include <algorithm>
#include <iterator>

namespace zem::play {

namespace {

template <std::size_t Count>
bool EndsInOneOf(std::string_view name, const std::string_view (&endings)[Count]) {
    const std::size_t dot = name.rfind('.');
    return dot != std::string_view::npos &&
           std::any_of(std::begin(endings), std::end(endings), [&](std::string_view ending) {
               return EqualIgnoringCase(name.substr(dot + 1), ending);
           });
}

} // namespace

bool IsPlainFileName(std::string_view name) {
    return !name.empty() && name.front() != '.' && name.find_first_of("/\\:") == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

bool IsPictureName(std::string_view name) {
    constexpr std::string_view Endings[] = {"png", "jpg", "jpeg", "gif", "webp", "bmp", "svg"};
    return EndsInOneOf(name, Endings);
}

bool IsSoundName(std::string_view name) {
    constexpr std::string_view Endings[] = {"wav", "mp3", "ogg", "flac"};
    return EndsInOneOf(name, Endings);
}

} // namespace zem::play
