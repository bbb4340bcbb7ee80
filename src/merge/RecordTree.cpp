#include "merge/RecordTree.h"

#include <algorithm>
#include <charconv>
#include <type_traits>

namespace zem::merge {

namespace {

constexpr std::string_view Set = "yes";

/// Whether the tree has the field: see RecordTree.
bool IsLeftOut(FieldId id) {
    return id == FieldId::GameNextInternalProcedure || id == FieldId::GameKelVersion ||
           id == FieldId::ErrorDescription;
}

template <class Record>
constexpr FieldId KeyOf() {
    if constexpr (std::is_same_v<Record, ScriptPair>)
        return FieldId::PairKey;
    else if constexpr (std::is_same_v<Record, Thing>)
        return FieldId::ThingName;
    else if constexpr (std::is_same_v<Record, Room>)
        return FieldId::RoomName;
    else if constexpr (std::is_same_v<Record, TextSection>)
        return FieldId::TextName;
    else if constexpr (std::is_same_v<Record, ItemEntry>)
        return FieldId::ItemName;
    else if constexpr (std::is_same_v<Record, Collectable>)
        return FieldId::CollectableName;
    else if constexpr (std::is_same_v<Record, Procedure>)
        return FieldId::ProcedureName;
    else if constexpr (std::is_same_v<Record, SelectionMenu>)
        return FieldId::MenuName;
    else if constexpr (std::is_same_v<Record, SynonymEntry>)
        return FieldId::SynonymWords;
    else if constexpr (std::is_same_v<Record, PlayerCommand>)
        return FieldId::CommandPattern;
    else if constexpr (std::is_same_v<Record, ErrorMessage>)
        return FieldId::ErrorName;
    else
        return FieldId::None; // a text is its own key
}

class TreeBuilder {
public:
    explicit TreeBuilder(RecordTree& tree) : tree_(tree) {}

    void Run() {
        current_ = tree_.Append({});
        ReadFields(tree_.Game(), {});
    }

private:
    template <class Record>
    void ReadFields(const Record& record, FieldUse owner) {
        ForEachField<Record>([&](const auto& field) {
            ReadValue(record.*field.member, field.id, field.name, detail::UseInside(owner, field.use));
        });
    }

    void ReadValue(const std::string& text, FieldId id, const char* name, FieldUse use) {
        const int number = number_++;
        if (id == key_ && exit_ == FieldId::None) {
            tree_.Edit(current_).key = text;
            tree_.Edit(current_).keyNumber = number;
        }
        if (!text.empty() && !IsLeftOut(id))
            tree_.Edit(current_).fields.push_back({number, exit_, id, name, exitName_, use.kind, text});
    }

    void ReadValue(bool mark, FieldId id, const char* name, FieldUse use) {
        const int number = number_++;
        if (mark)
            tree_.Edit(current_).fields.push_back({number, exit_, id, name, exitName_, use.kind, Set});
    }

    void ReadValue(std::int16_t value, FieldId id, const char* name, FieldUse use) {
        const int number = number_++;
        if (value != 0 && !IsLeftOut(id))
            tree_.Edit(current_).fields.push_back(
                {number, exit_, id, name, exitName_, use.kind, tree_.Keep(std::to_string(value))});
    }

    void ReadValue(const Shared<std::string>& text, FieldId id, const char* name, FieldUse use) {
        if (id == FieldId::GameUnknownBlocks)
            ReadBlocks(*text, name);
        else
            ReadValue(*text, id, name, use);
    }

    void ReadValue(const Shared<ScriptPair>& exit, FieldId id, const char* name, FieldUse use) {
        exit_ = id;
        exitName_ = name;
        ForEachField<ScriptPair>([&](const auto& field) {
            ReadValue((*exit).*field.member, field.id, field.name, detail::UseInside(use, field.use));
        });
        exit_ = FieldId::None;
        exitName_ = nullptr;
    }

    template <RecordList Records>
    void ReadValue(const Records& list, FieldId id, const char* name, FieldUse use) {
        int entry = 0;
        for (const auto& record : list) {
            ++entry;
            if (id != FieldId::GameProcedures || !tree_.IsInlined(entry))
                InRecord(id, name, entry, [&] { ReadEntry(record, name, use); });
        }
    }

    template <class Entry>
    void ReadEntry(const Entry& entry, const char* name, FieldUse use) {
        key_ = KeyOf<Entry>();
        if constexpr (std::is_same_v<Entry, std::string>)
            ReadValue(entry, FieldId::None, name, use);
        else
            ReadFields(entry, use);
    }

    /// Blocks end in an empty line. One that is not as files have it counts with the next one.
    void ReadBlocks(const std::string& blocks, const char* name) {
        int entry = 0;
        for (std::size_t begin = 0; begin < blocks.size();) {
            const std::size_t end = blocks.find("\r\n\r\n", begin);
            const std::size_t size = end == std::string::npos ? std::string::npos : end + 4 - begin;
            const std::string_view block = std::string_view(blocks).substr(begin, size);
            InRecord(FieldId::GameUnknownBlocks, name, ++entry, [&] {
                TreeRecord& record = tree_.Edit(current_);
                record.key = block.substr(0, block.find("\r\n"));
                record.fields.push_back(
                    {0, FieldId::None, FieldId::None, "lines", nullptr, FieldKind::RawLines, block});
            });
            begin += block.size();
        }
    }

    template <class Read>
    void InRecord(FieldId list, const char* listName, int entry, Read read) {
        TreeRecord record;
        record.list = list;
        record.listName = listName;
        record.entry = entry;
        record.parent = current_;
        const int parent = current_;
        const int number = number_;
        current_ = tree_.Append(std::move(record));
        tree_.Edit(parent).children.push_back(current_);
        number_ = 0;
        key_ = FieldId::None;
        read();
        current_ = parent;
        number_ = number;
    }

    RecordTree& tree_;
    int current_ = 0;
    int number_ = 0;
    FieldId exit_ = FieldId::None;
    const char* exitName_ = nullptr;
    FieldId key_ = FieldId::None; // of the kind of record being read
};

/// Fills records from those of a tree, in the order in which TreeBuilder reads them.
class GameBuilder {
public:
    explicit GameBuilder(const RecordTree& tree) : tree_(tree) {}

    void Fill(GameModel& game) { FillFields(game, tree_[0]); }

private:
    template <class Record>
    void FillFields(Record& record, const TreeRecord& from) {
        ForEachField<Record>([&](const auto& field) { FillValue(record.*field.member, field.id, from); });
    }

    std::string_view Next(const TreeRecord& from) { return from.Text(number_++); }

    void FillValue(std::string& text, FieldId id, const TreeRecord& from) {
        const std::string_view next = Next(from);
        if (!IsLeftOut(id))
            text = next;
    }

    void FillValue(bool& mark, FieldId, const TreeRecord& from) { mark = !Next(from).empty(); }

    void FillValue(std::int16_t& value, FieldId id, const TreeRecord& from) {
        const std::string_view next = Next(from);
        if (IsLeftOut(id))
            return;
        value = 0;
        std::from_chars(next.data(), next.data() + next.size(), value);
    }

    void FillValue(Shared<std::string>& text, FieldId id, const TreeRecord& from) {
        std::string value;
        if (id == FieldId::GameUnknownBlocks) {
            for (const int child : from.children)
                if (tree_[child].list == id)
                    value += tree_[child].Text(0);
        } else {
            value = Next(from);
        }
        text = value.empty() ? Shared<std::string>() : Shared<std::string>(std::move(value));
    }

    void FillValue(Shared<ScriptPair>& exit, FieldId, const TreeRecord& from) {
        ScriptPair pair;
        FillFields(pair, from);
        exit = pair == ScriptPair() ? Shared<ScriptPair>() : Shared<ScriptPair>(std::move(pair));
    }

    template <RecordList Records>
    void FillValue(Records& list, FieldId id, const TreeRecord& from) {
        const int number = number_;
        const Records before = std::exchange(list, Records());
        for (const int child : from.children) {
            if (tree_[child].list != id)
                continue;
            number_ = 0;
            if constexpr (std::is_same_v<typename Records::RecordType, ErrorMessage>)
                FillMessage(list.Append(), before, tree_[child]);
            else if constexpr (std::is_same_v<typename Records::RecordType, std::string>)
                list.Append(std::string(Next(tree_[child])));
            else
                FillFields(list.Append(), tree_[child]);
        }
        number_ = number;
    }

    /// What a message is about only the catalogue knows.
    void FillMessage(ErrorMessage& message, const Table<ErrorMessage>& catalogue, const TreeRecord& from) {
        FillFields(message, from);
        for (const ErrorMessage& known : catalogue)
            if (known.Name == message.Name)
                message.Description = known.Description;
    }

    const RecordTree& tree_;
    int number_ = 0;
};

} // namespace

std::string_view TreeRecord::Text(int number) const {
    const auto found =
        std::lower_bound(fields.begin(), fields.end(), number,
                         [](const TreeField& field, int wanted) { return field.number < wanted; });
    return found == fields.end() || found->number != number ? std::string_view() : found->text;
}

bool IsHidden(const TreeRecord& record) {
    return record.list == FieldId::GameProcedures && record.key.starts_with(InternalProcedure);
}

RecordTree::RecordTree(const GameModel& game, char version) : inline_(WithInlineScripts(game, version)) {
    // A file says that there is no item in the same way as that there is one without a name.
    if (game.Items.Count() == 1 && game.Items[1].Name.empty())
        inline_.game.Items.Clear();
    TreeBuilder(*this).Run();
}

int RecordTree::Append(TreeRecord record) {
    records_.push_back(std::move(record));
    return Count() - 1;
}

int RecordTree::VisibleEntry(int record) const {
    int entry = 1;
    for (const int sibling : (*this)[(*this)[record].parent].children) {
        if (sibling == record)
            break;
        entry += (*this)[sibling].list == (*this)[record].list && !IsHidden((*this)[sibling]) ? 1 : 0;
    }
    return entry;
}

Place RecordTree::PlaceOf(int record, const TreeField* field) const {
    if ((*this)[record].list == FieldId::GameUnknownBlocks)
        return Place::Of({}, FieldId::GameUnknownBlocks);
    std::vector<PlaceStep> steps;
    for (int at = record; at > 0; at = (*this)[at].parent)
        steps.insert(steps.begin(), {(*this)[at].list, (*this)[at].entry});
    if (field != nullptr && field->exit != FieldId::None)
        steps.push_back({field->exit, 0});
    Place place;
    std::copy(steps.begin(), steps.end(), place.steps.begin());
    place.field = field == nullptr ? FieldId::None : field->id;
    return place;
}

GameModel GameOf(const RecordTree& tree, const GameModel& start) {
    GameModel game = start;
    GameBuilder(tree).Fill(game);
    return game;
}

} // namespace zem::merge
