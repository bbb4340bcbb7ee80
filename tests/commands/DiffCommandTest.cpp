#include "base/TextEncoding.h"
#include "merge/Edits.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/ZemCall.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <list>
#include <nlohmann/json.hpp>

namespace zem::test {
namespace {

using Json = nlohmann::json;

/// A game as the differences speak of it.
struct Node {
    std::string list;
    std::map<std::string, std::string> fields;
    std::vector<std::shared_ptr<Node>> entries;
};
using NodePointer = std::shared_ptr<Node>;

NodePointer NodeOf(const merge::RecordTree& tree, int record) {
    auto node = std::make_shared<Node>();
    node->list = tree[record].listName;
    for (const merge::TreeField& field : tree[record].fields)
        node->fields[merge::FieldName(field)] = ToUtf8(merge::WithoutMarks(field.text));
    for (const int child : tree[record].children)
        if (!IsHidden(tree[child]))
            node->entries.push_back(NodeOf(tree, child));
    return node;
}

NodePointer NodeOf(const Json& json, const std::string& list) {
    auto node = std::make_shared<Node>();
    node->list = list;
    for (const auto& [name, value] : json["fields"].items())
        node->fields[name] = value;
    for (const Json& entry : json["entries"])
        node->entries.push_back(NodeOf(entry, entry["list"]));
    return node;
}

NodePointer NodeOf(const GameModel& game) {
    return NodeOf(merge::RecordTree(game, 'x'), 0);
}

std::string Text(const Node& node) {
    std::string text = node.list + "\n";
    for (const auto& [name, value] : node.fields)
        text += name + "=" + value + "\n";
    std::map<std::string, std::string> lists; // the order within each counts
    for (const NodePointer& entry : node.entries)
        lists[entry->list] += Text(*entry);
    for (const auto& [list, entries] : lists)
        text += entries;
    return text + "end\n";
}

NodePointer Find(NodePointer node, const Json& steps, std::size_t count) {
    for (std::size_t k = 0; k < count; ++k) {
        int left = steps[k]["entry"];
        const auto found =
            std::find_if(node->entries.begin(), node->entries.end(), [&](const NodePointer& entry) {
                return entry->list == steps[k]["list"] && --left == 0;
            });
        if (found == node->entries.end())
            throw KelError("no such entry: " + steps.dump());
        node = *found;
    }
    return node;
}

void Insert(const NodePointer& game, const Json& steps, const NodePointer& entry) {
    std::vector<NodePointer>& entries = Find(game, steps, steps.size() - 1)->entries;
    int left = steps.back()["entry"];
    const auto before = std::find_if(entries.begin(), entries.end(), [&](const NodePointer& other) {
        return other->list == entry->list && --left == 0;
    });
    entries.insert(before, entry);
}

/// What docs/json.md says: take out what is removed or moved, change fields, put in what is added or moved in
/// the order of the second game, outer records first.
void Apply(const NodePointer& game, const Json& differences) {
    std::vector<std::pair<Json, NodePointer>> taken;
    std::vector<std::pair<NodePointer, Json>> changed;
    for (const Json& difference : differences) {
        if (difference["kind"] == "changed")
            changed.emplace_back(Find(game, difference["before"], difference["before"].size()), difference);
        else if (difference["kind"] == "added")
            taken.emplace_back(difference["after"],
                               NodeOf(difference["record"], difference["after"].back()["list"]));
        else
            taken.emplace_back(difference.value("after", Json()),
                               Find(game, difference["before"], difference["before"].size()));
    }
    std::vector<NodePointer> gone;
    std::vector<std::pair<NodePointer, NodePointer>> parents;
    for (const Json& difference : differences)
        if (difference.contains("before") && difference["kind"] != "changed")
            parents.emplace_back(Find(game, difference["before"], difference["before"].size() - 1),
                                 Find(game, difference["before"], difference["before"].size()));
    for (const auto& [parent, entry] : parents)
        std::erase(parent->entries, entry);
    for (const auto& [node, difference] : changed) {
        node->fields[difference["field"]] = difference["to"];
        if (difference["to"] == "")
            node->fields.erase(difference["field"].get<std::string>());
    }
    std::erase_if(taken, [](const auto& entry) { return entry.first.is_null(); });
    std::stable_sort(taken.begin(), taken.end(), [](const auto& a, const auto& b) {
        const auto key = [](const Json& steps) {
            std::vector<int> entries;
            for (const Json& step : steps)
                entries.push_back(step["entry"]);
            return std::pair(steps.size(), entries);
        };
        return key(a.first) < key(b.first);
    });
    for (const auto& [steps, entry] : taken)
        Insert(game, steps, entry);
}

TEST(DiffCommand, ShowsWhatAppliedToOneGameGivesTheOther) {
    const TempFolder folder;
    const GameModel before = Saved(Lighthouse());
    const std::string a = folder.Write("a.kel", SaveToBytes(before));
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        GameModel after = before;
        for (unsigned k = seed % 12 + 1; k > 0; --k)
            RandomEdit(after, random).apply(after);
        if (seed % 3 == 0) { // in another order
            const Room room = after.Rooms[5];
            after.Rooms.Remove(5);
            after.Rooms.Append(room);
        }
        const std::string b = folder.Write("b.txt", SaveToBytes(after));
        const ZemCall run({"diff", a, b, "--json"});
        ASSERT_EQ(run.result.exitStatus, 1) << run.err;
        const NodePointer game = NodeOf(before);
        Apply(game, Json::parse(run.out)["differences"]);
        ASSERT_EQ(Text(*game), Text(*NodeOf(Saved(after))));
    }
}

TEST(DiffCommand, ShowsOneEditInThreeLines) {
    const TempFolder folder;
    const GameModel before = Saved(Lighthouse());
    const std::string a = folder.Write("a.kel", SaveToBytes(before));
    for (unsigned seed = 1; seed <= 80; ++seed) {
        std::mt19937 random(seed);
        const Edit edit = RandomEdit(before, random);
        if (edit.kind == "new command" || edit.kind == "new procedure" ||
            edit.kind.ends_with("several lines"))
            continue; // writes several lines or records
        GameModel after = before;
        edit.apply(after);
        const std::string b = folder.Write("b.kel", SaveToBytes(after));
        const ZemCall run({"diff", a, b});
        EXPECT_LE(std::count(run.out.begin(), run.out.end(), '\n'), 3) << edit.kind << '\n' << run.out;
    }
}

std::string InGame(const std::string& blocks) {
    return CrLf("define game <x>\nend define\n" + blocks);
}

TEST(DiffCommand, TellsByRoomAndField) {
    const TempFolder folder;
    const std::string hall = "define room <Hall>\nlook <A dark hall.>\n";
    const std::string lamp = "define object <lamp>\ntake {\nmsg <a>\nmsg <b>\n}\nend define\n";
    for (const auto& [before, after, expected] : Cases<std::string, std::string, std::string>{
             {hall + "end define\n", "define room <Hall>\nlook <A bright hall.>\nend define\n",
              "room Hall, description: A [-dark-]{+bright+} hall.\n"},
             {hall + "end define\n", hall + "north <Caf\xE9>\nalias <h>\nend define\n",
              "room Hall\n  alias: {+h+}\n  exit north: {+Caf\xC3\xA9+}\n"},
             {hall + lamp + "end define\ndefine room <Attic>\nend define\n",
              hall + "end define\ndefine room <Attic>\n" + lamp + "end define\n",
              "object lamp in Attic: moved here from room Hall\n"},
             {hall + lamp + "end define\n",
              "define procedure <p>\nif has <x> then {\nmsg <x>\n}\nend define\n" + hall +
                  "define object <lamp>\ntake {\nmsg <a>\nmsg <c>\n}\nend define\nend define\n",
              "object lamp in Hall, take, line 3: msg <[-b-]{+c+}>\n+ procedure p\n    script: | if has <x> "
              "then  { | msg <x> | }\n"},
             {hall + "end define\n", hall + "script {\nmsg <a>\nmsg <b>\n}\nend define\n",
              "room Hall, enter action, line 1: {+ { | msg <a> | msg <b> | }+}\n"},
             {hall + lamp + "end define\n", hall + "end define\n", "- object lamp in Hall\n"},
             {"define synonyms\nend define\n", "define synonyms\nx; examine = look at\nend define\n",
              "+ synonym look at\n    words: x; examine | word: look at\n"},
             {hall + "end define\ndefine room <A>\nend define\ndefine room <B>\nend define\n",
              "define room <A>\nend define\ndefine room <B>\nend define\n" + hall + "end define\n",
              "room Hall: moved behind B\n"},
             {hall + "end define\n", "define room <Inn>\nlook <A dark hall.>\nend define\n",
              "room Inn, name: [-Hall-]{+Inn+}\n"},
         }) {
        const std::string a = folder.Write("a.kel", InGame(before));
        const std::string b = folder.Write("b.kel", InGame(after));
        const ZemCall run({"diff", a, b});
        EXPECT_EQ(run.out, expected);
        EXPECT_EQ(run.result.exitStatus, 1);
        EXPECT_EQ(ZemCall({"diff", a, a}).result.exitStatus, 0);
        const std::string html = ZemCall({"diff", a, b, "--html"}).out;
        EXPECT_TRUE(html.starts_with("<!DOCTYPE html>")) << html;
        EXPECT_TRUE(html.find("<ins>") != std::string::npos || html.find("<del>") != std::string::npos ||
                    html.find("moved") != std::string::npos)
            << html;
    }
}

TEST(DiffCommand, LeavesOutHeaderAndNumbersAndNamesWhatItCannotRead) {
    const TempFolder folder;
    const std::string body =
        "define game <x>\r\nend define\r\ndefine room <Hall>\r\nscript {\r\nmsg <a>\r\n}\r\nend define\r\n";
    const std::string a =
        folder.Write("a.kel", "' /home/a/a.kel created by ZEM 1.0\r\n'ZEM-NIP <1>\r\n" + body);
    const std::string b =
        folder.Write("b.kel", "' /home/b/b.kel created by ZEM 1.0\r\n'ZEM-NIP <77>\r\n" + body);
    const ZemCall same({"diff", a, b});
    EXPECT_EQ(same.out, "");
    EXPECT_EQ(same.result.exitStatus, 0);
    const std::string bad =
        folder.Write("bad.kel", "define game <x>\r\n=======\r\n<<<<<<< a\r\nend define\r\n");
    const ZemCall run({"diff", a, bad});
    EXPECT_EQ(run.result.exitStatus, 2);
    EXPECT_TRUE(run.err.starts_with(bad + ":3: ")) << run.err;
    EXPECT_EQ(ZemCall({"diff", a, folder.Path("none.kel")}).result.exitStatus, 2);
    EXPECT_EQ(ZemCall({"diff", a, b, "--html", "--json"}).result.exitStatus, 2);
}

} // namespace
} // namespace zem::test
