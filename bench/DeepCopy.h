#pragma once

#include "model/Fields.h"

#include <string>
#include <type_traits>

namespace zem::bench {

// Copies that share nothing with what they were made of.

inline void CopyDeeply(const std::string& from, std::string& to) {
    to.assign(from.data(), from.size());
}
template <class Record>
void CopyDeeply(const Shared<Record>& from, Shared<Record>& to);
template <RecordList Records>
void CopyDeeply(const Records& from, Records& to);

template <class Record>
void CopyDeeply(const Record& from, Record& to) {
    if constexpr (std::is_arithmetic_v<Record>)
        to = from;
    ForEachField<Record>([&](const auto& field) { CopyDeeply(from.*field.member, to.*field.member); });
}
template <class Record>
void CopyDeeply(const Shared<Record>& from, Shared<Record>& to) {
    if (*from == Record())
        return; // An empty record takes no memory in either.
    CopyDeeply(*from, to.Edit());
}
template <RecordList Records>
void CopyDeeply(const Records& from, Records& to) {
    for (const auto& record : from)
        CopyDeeply(record, to.Append());
}

} // namespace zem::bench
