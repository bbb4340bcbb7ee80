#pragma once

#include "merge/RecordTree.h"

#include <functional>
#include <string>

namespace zem::merge {

/// The record in plain words: "object lamp in Hall".
std::string DescribeRecord(const RecordTree& tree, int record);

/// The same with the field: "object lamp in Hall, look".
std::string DescribeField(const RecordTree& tree, int record, const TreeField& field);

/// What the field is called: "exit north", "exit out, action".
std::string FieldName(const TreeField& field);

/// All that stands in the record, a field or an entry of a list on each line, without its name.
/// @param indent    blanks before each line
/// @param isLeftOut  asked for each entry of a list; null for none
std::string RecordText(const RecordTree& tree, int record, std::size_t indent = 0,
                       const std::function<bool(int)>& isLeftOut = nullptr);

} // namespace zem::merge
