#include "merge/Describe.h"

#include "base/LineText.h"
#include "merge/CommonRuns.h"

namespace zem::merge {

namespace {

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

/// What stands between the first and the last line of a block.
std::string BlockText(std::string_view block, std::size_t indent) {
    std::string text;
    const std::string plain = WithoutMarks(block);
    const auto lines = LinesOf(plain);
    for (std::size_t k = 1; k < lines.size(); ++k)
        if (!lines[k].empty() && !BeginsWith(lines[k], "end define"))
            text.append(indent, ' ').append(lines[k]).append("\r\n");
    return text;
}

} // namespace

std::string DescribeRecord(const RecordTree& tree, int record) {
    if (IsBlock(tree[record]))
        return "block " + ShowShortly(tree[record].key);
    return DescribePlace(tree.Game(), tree.PlaceOf(record));
}

std::string FieldName(const TreeField& field) {
    if (field.exitName == nullptr)
        return field.name;
    // An exit is where it leads to.
    return field.id == FieldId::PairKey ? field.exitName : std::string(field.exitName) + ", action";
}

std::string DescribeField(const RecordTree& tree, int record, const TreeField& field) {
    if (IsBlock(tree[record]) || field.id == FieldId::None)
        return DescribeRecord(tree, record);
    return DescribePlace(tree.Game(), tree.PlaceOf(record, &field));
}

std::string RecordText(const RecordTree& tree, int record, std::size_t indent,
                       const std::function<bool(int)>& isLeftOut) {
    std::string text;
    if (IsBlock(tree[record]))
        return BlockText(tree[record].Text(0), indent);
    for (const TreeField& field : tree[record].fields)
        // A synonym is called by what its words become, so they are told, too.
        if ((field.number != tree[record].keyNumber || field.id == FieldId::SynonymWords) &&
            field.id != FieldId::None)
            AppendLines(text, indent, FieldName(field), field.text);
    for (const int child : tree[record].children) {
        if (isLeftOut != nullptr && isLeftOut(child))
            continue;
        text.append(indent, ' ')
            .append(tree[child].listName)
            .append(" ")
            .append(tree[child].key)
            .append("\r\n");
        text += RecordText(tree, child, indent + 2, isLeftOut);
    }
    return text;
}

} // namespace zem::merge
