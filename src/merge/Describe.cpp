#include "merge/Describe.h"

#include "base/LineText.h"
#include "merge/CommonRuns.h"

namespace zem::merge {

namespace {

/// The name that entries of a list of fields are known by, in front of what stands in them.
const char* NameInLines(const TreeField& field) {
    switch (field.exit) {
    case FieldId::None:
        return field.name;
    case FieldId::RoomOut:
        return field.id == FieldId::PairKey ? field.name : "exit out, action";
    default:
        return field.name;
    }
}

bool IsBlock(const TreeRecord& record) {
    return record.list == FieldId::GameUnknownBlocks;
}

void AppendLines(std::string& text, std::size_t indent, const std::string& name, std::string_view value) {
    const std::string plain =
        WithoutMarks(value.ends_with("\r\n") ? value.substr(0, value.size() - 2) : value);
    const auto lines = LinesOf(plain);
    text.append(indent, ' ').append(name).append(":");
    if (lines.size() == 1)
        text.append(" ").append(lines.front());
    text.append("\r\n");
    if (lines.size() > 1)
        for (const std::string_view line : lines)
            text.append(indent + 2, ' ').append(line).append("\r\n");
}

} // namespace

std::string DescribeRecord(const RecordTree& tree, int record) {
    if (IsBlock(tree[record]))
        return "block " + ShowShortly(tree[record].key);
    return DescribePlace(tree.Game(), tree.PlaceOf(record));
}

std::string FieldName(const TreeField& field) {
    return NameInLines(field);
}

std::string DescribeField(const RecordTree& tree, int record, const TreeField& field) {
    if (IsBlock(tree[record]) || field.id == FieldId::None)
        return DescribeRecord(tree, record);
    return DescribePlace(tree.Game(), tree.PlaceOf(record, &field));
}

std::string RecordText(const RecordTree& tree, int record, std::size_t indent) {
    std::string text;
    for (const TreeField& field : tree[record].fields)
        if (field.number != tree[record].keyNumber && field.id != FieldId::None)
            AppendLines(text, indent, FieldName(field), field.text);
        else if (IsBlock(tree[record]))
            AppendLines(text, indent, FieldName(field), field.text);
    for (const int child : tree[record].children) {
        text.append(indent, ' ')
            .append(tree[child].listName)
            .append(" ")
            .append(tree[child].key)
            .append("\r\n");
        text += RecordText(tree, child, indent + 2);
    }
    return text;
}

} // namespace zem::merge
