#include "merge/MergeGames.h"

#include "base/LineText.h"
#include "merge/Describe.h"

#include <algorithm>

namespace zem::merge {

namespace {

bool HasLines(FieldKind kind) {
    return kind == FieldKind::Script || kind == FieldKind::Text || kind == FieldKind::RawLines;
}

/// Whether files hold the field on a line of its own, so that it cannot have several lines.
bool IsOneLine(const TreeField& field) {
    return field.id != FieldId::ProcedureScript && field.id != FieldId::TextText &&
           field.kind != FieldKind::RawLines;
}

bool HasLinesOutsideBraces(std::string_view text) {
    int depth = 0;
    for (std::size_t k = 0; k + 1 < text.size(); ++k) {
        if (text[k + 1] == '\t')
            depth += text[k] == '{' ? 1 : text[k] == '}' ? -1 : 0;
        else if (text[k] == '\r' && text[k + 1] == '\n' && depth == 0)
            return true;
    }
    return false;
}

/// Whether blocks inside of a text, which files may have anywhere, begin and end in it. Lines of two versions
/// may have lost one end, and a file would end in the middle of a block.
bool BlocksMatch(std::string_view text) {
    int depth = 0;
    for (const std::string_view line : SplitAt(text, "\r\n")) {
        depth += BeginsWith(line, "define") ? 1 : BeginsWith(line, "end define") ? -1 : 0;
        if (depth < 0)
            return false;
    }
    return depth == 0;
}

/// A text of several lines in a field that holds one: a script becomes one in braces, a text breaks its line.
std::string OnOneLine(const TreeField& field, std::string text) {
    if (!IsOneLine(field) || !HasLinesOutsideBraces(text))
        return text;
    if (field.kind == FieldKind::Script)
        return "{\tt0\t\r\n" + text + "\r\n}\t+";
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;)
        text.replace(at, 2, "|n");
    return text;
}

class GameMerger {
public:
    GameMerger(const GameModel& base, const GameModel& ours, const GameModel& theirs, const Choices& choices)
        : start_(ours),
          trees_{RecordTree(base, 'b'), RecordTree(ours, 'o'), RecordTree(theirs, 't')},
          choices_(choices),
          plan_({&trees_[Base], &trees_[Ours], &trees_[Theirs]}, choices),
          nodes_(static_cast<std::size_t>(plan_.Count()), -1) {
        start_.NextInternalProcedure = std::max(ours.NextInternalProcedure, theirs.NextInternalProcedure);
    }

    MergeResult Run() {
        for (const RecordConflict& conflict : plan_.Conflicts())
            Tell(conflict);
        Emit(0, -1);
        MergeResult result;
        result.game = GameOf(merged_, start_);
        const std::vector<int> procedures = PutProceduresBack(result.game, start_);
        PlaceConflicts(procedures);
        result.conflicts = std::move(conflicts_);
        return result;
    }

private:
    const RecordTree& Tree(Version version) const { return trees_[version]; }

    void Emit(int record, int parent) {
        TreeRecord made;
        made.list = plan_[record].list;
        made.parent = parent;
        const int node = merged_.Append(std::move(made));
        nodes_[static_cast<std::size_t>(record)] = node;
        MergeFields(record, node);
        std::map<FieldId, int> entries;
        for (const int child : plan_[record].children) {
            merged_.Edit(node).children.push_back(merged_.Count());
            const int entry = ++entries[plan_[child].list];
            Emit(child, node);
            merged_.Edit(nodes_[static_cast<std::size_t>(child)]).entry = entry;
        }
    }

    // Fields

    void MergeFields(int record, int node) {
        const auto& at = plan_[record].at;
        if (at[Ours] < 0 || at[Theirs] < 0) {
            const Version only = at[Ours] < 0 ? Theirs : Ours;
            merged_.Edit(node).fields = Tree(only)[at[only]].fields;
            return;
        }
        static const TreeRecord nothing;
        const TreeRecord& base = at[Base] < 0 ? nothing : Tree(Base)[at[Base]];
        const TreeRecord& ours = Tree(Ours)[at[Ours]];
        const TreeRecord& theirs = Tree(Theirs)[at[Theirs]];
        if (SameFields(base, theirs) || SameFields(ours, theirs)) {
            merged_.Edit(node).fields = ours.fields;
            return;
        }
        std::vector<const TreeField*> fields = AllFields({&base, &ours, &theirs});
        for (std::size_t k = 0; k < fields.size(); ++k) {
            const TreeField& field = *fields[k];
            const Texts texts = {base.Text(field.number), ours.Text(field.number), theirs.Text(field.number)};
            if (IsExitThatMoved(field, texts)) {
                k += k + 1 < fields.size() && fields[k + 1]->exit == field.exit ? 1 : 0;
                MergeExit(record, node, field, {&base, &ours, &theirs});
            } else {
                Add(node, field, MergeText(record, field, texts));
            }
        }
        KeepCollectableName(node);
    }

    using Texts = std::array<std::string_view, 3>;

    /// One field of each number that a version has, in order.
    static std::vector<const TreeField*> AllFields(std::initializer_list<const TreeRecord*> versions) {
        std::vector<const TreeField*> fields;
        for (const TreeRecord* version : versions)
            for (const TreeField& field : version->fields)
                fields.push_back(&field);
        std::stable_sort(fields.begin(), fields.end(),
                         [](const TreeField* a, const TreeField* b) { return a->number < b->number; });
        fields.erase(
            std::unique(fields.begin(), fields.end(),
                        [](const TreeField* a, const TreeField* b) { return a->number == b->number; }),
            fields.end());
        return fields;
    }

    void Add(int node, const TreeField& field, std::string_view text) {
        if (text.empty())
            return;
        TreeField added = field;
        added.text = text;
        merged_.Edit(node).fields.push_back(added);
    }

    std::string_view MergeText(int record, const TreeField& field, const Texts& texts) {
        const auto& [base, ours, theirs] = texts;
        if (SameText(ours, theirs) || SameText(base, theirs))
            return ours;
        if (SameText(base, ours))
            return theirs;
        if (HasLines(field.kind) && IsNoName(record, field)) {
            const MergedLines lines = MergeLines(base, ours, theirs, field.kind, LineChoices(record, field));
            if (BracesMatch(lines.text) && BlocksMatch(lines.text)) {
                for (std::size_t k = 0; k < lines.conflicts.size(); ++k)
                    Tell(record, field, lines.conflicts[k], static_cast<int>(k));
                return merged_.Keep(OnOneLine(field, lines.text));
            }
        }
        Tell(record, field, {std::string(base), std::string(ours), std::string(theirs), 0}, 0);
        return ChoiceOf({record, field.number, 0}) == Take::Theirs ? theirs : ours;
    }

    bool IsNoName(int record, const TreeField& field) const {
        return Tree(Ours)[plan_[record].at[Ours]].keyNumber != field.number;
    }

    /// An exit that leads elsewhere in a version: where it leads to and its action belong together.
    static bool IsExitThatMoved(const TreeField& field, const Texts& texts) {
        return field.exit != FieldId::None && field.exit != FieldId::RoomOut &&
               field.id == FieldId::PairKey && (texts[Base] != texts[Ours] || texts[Base] != texts[Theirs]);
    }

    void MergeExit(int record, int node, const TreeField& key,
                   const std::array<const TreeRecord*, 3>& versions) {
        TreeField action = key;
        ++action.number;
        action.id = FieldId::PairScript;
        const auto sameIn = [&](Version a, Version b) {
            return versions[a]->Text(key.number) == versions[b]->Text(key.number) &&
                   SameText(versions[a]->Text(action.number), versions[b]->Text(action.number));
        };
        Version taken = Ours;
        if (sameIn(Base, Ours)) {
            taken = Theirs;
        } else if (!sameIn(Base, Theirs) && !sameIn(Ours, Theirs)) {
            std::array<std::string, 3> shown;
            for (const Version version : {Base, Ours, Theirs}) {
                shown[version] = versions[version]->Text(key.number);
                if (const std::string_view script = versions[version]->Text(action.number); !script.empty())
                    shown[version].append(" ").append(script);
            }
            Tell(record, key, {shown[Base], shown[Ours], shown[Theirs], 0}, 0);
            taken = ChoiceOf({record, key.number, 0}) == Take::Theirs ? Theirs : Ours;
        }
        Add(node, key, versions[taken]->Text(key.number));
        Add(node, action, versions[taken]->Text(action.number));
    }

    /// The name of a collectable is the first word of its definition, whichever version that is from.
    void KeepCollectableName(int node) {
        TreeRecord& made = merged_.Edit(node);
        if (made.list != FieldId::GameCollectables)
            return;
        std::string_view name;
        for (const TreeField& field : made.fields)
            if (field.id == FieldId::CollectableDefinition)
                name = field.text.substr(0, field.text.find(' '));
        for (TreeField& field : made.fields)
            if (field.id == FieldId::CollectableName)
                field.text = name;
    }

    Take ChoiceOf(const ConflictId& id) const {
        const auto found = choices_.find(id);
        return found == choices_.end() ? Take::Ours : found->second;
    }

    std::vector<Take> LineChoices(int record, const TreeField& field) const {
        std::vector<Take> takes;
        for (auto at = choices_.lower_bound({record, field.number, 0});
             at != choices_.end() && at->first.record == record && at->first.field == field.number; ++at) {
            takes.resize(static_cast<std::size_t>(at->first.part), Take::Ours);
            takes.push_back(at->second);
        }
        return takes;
    }

    // Conflicts

    void Tell(int record, const TreeField& field, const LineConflict& lines, int part) {
        Conflict conflict;
        conflict.id = {record, field.number, part};
        const int inOurs = plan_[record].at[Ours];
        conflict.where = DescribeField(Tree(Ours), inOurs, field);
        conflict.line = lines.line;
        conflict.base = WithoutMarks(lines.base);
        conflict.ours = WithoutMarks(lines.ours);
        conflict.theirs = WithoutMarks(lines.theirs);
        conflict.canTakeBoth = lines.line != 0;
        SetPlaces(conflict, record, &field);
        conflicts_.push_back(std::move(conflict));
        fields_.push_back(field);
    }

    void Tell(const RecordConflict& found) {
        Conflict conflict;
        const int record = found.id.record;
        conflict.id = found.id;
        conflict.kind = found.kind;
        const Version told = plan_[record].at[Ours] >= 0 ? Ours : Theirs;
        conflict.where = DescribeRecord(Tree(told), plan_[record].at[told]);
        const std::array<std::string*, 3> texts = {&conflict.base, &conflict.ours, &conflict.theirs};
        for (const Version version : {Base, Ours, Theirs})
            *texts[version] = TextOf(found, version);
        if (found.kind == ConflictKind::Order)
            conflict.where += ", order of each " + ListName(found);
        SetPlaces(conflict, record, nullptr);
        conflicts_.push_back(std::move(conflict));
        fields_.emplace_back();
    }

    std::string TextOf(const RecordConflict& found, Version version) const {
        const int record = found.id.record;
        const int inTree = plan_[record].at[version];
        if (inTree < 0)
            return "";
        if (found.kind == ConflictKind::Moved)
            return DescribeRecord(Tree(version), Tree(version)[inTree].parent);
        if (found.kind != ConflictKind::Order)
            return RecordText(Tree(version), inTree);
        std::string names;
        for (const int child : plan_.ChildrenIn(version, record, found.list))
            names.append(Tree(version)[plan_[child].at[version]].key).append("\r\n");
        return names;
    }

    std::string ListName(const RecordConflict& found) const {
        const std::vector<int> children = plan_.ChildrenIn(Ours, found.id.record, found.list);
        return Tree(Ours)[plan_[children.front()].at[Ours]].listName;
    }

    void SetPlaces(Conflict& conflict, int record, const TreeField* field) const {
        const std::array<std::optional<Place>*, 3> places = {&conflict.inBase, &conflict.inOurs,
                                                             &conflict.inTheirs};
        for (const Version version : {Base, Ours, Theirs})
            if (const int inTree = plan_[record].at[version]; inTree >= 0)
                *places[version] = Tree(version).PlaceOf(inTree, field);
    }

    void PlaceConflicts(const std::vector<int>& procedures) {
        for (std::size_t k = 0; k < conflicts_.size(); ++k) {
            const int node = nodes_[static_cast<std::size_t>(conflicts_[k].id.record)];
            if (node < 0)
                continue;
            Place place =
                merged_.PlaceOf(node, conflicts_[k].kind == ConflictKind::Field ? &fields_[k] : nullptr);
            if (place.steps.front().list == FieldId::GameProcedures)
                place.steps.front().entry = procedures[static_cast<std::size_t>(place.steps.front().entry)];
            conflicts_[k].inMerged = place;
        }
    }

    GameModel start_;
    std::array<RecordTree, 3> trees_;
    const Choices& choices_;
    MergePlan plan_;
    RecordTree merged_;
    std::vector<int> nodes_; // of the merged tree, by record of the plan
    std::vector<Conflict> conflicts_;
    std::vector<TreeField> fields_; // of each conflict
};

} // namespace

MergeResult MergeGames(const GameModel& base, const GameModel& ours, const GameModel& theirs,
                       const Choices& choices) {
    return GameMerger(base, ours, theirs, choices).Run();
}

} // namespace zem::merge
