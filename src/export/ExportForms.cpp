#include "export/ExportForms.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "export/Export.h"

namespace zem::exports {

const std::vector<ExportForm>& ExportForms() {
    static const std::vector<ExportForm> forms = {
        {".html", "Web page to read", AsHtml},
        {".htm", "Web page to read", AsHtml},
        {".md", "Markdown", AsMarkdown},
        {".csv", "Table of the rooms",
         [](const GameModel& game, const CommandLookup&) { return AsCsv(game); }},
        {".json", "All data", [](const GameModel& game, const CommandLookup&) { return AsJson(game); }},
        {".dot", "Map for Graphviz", [](const GameModel& game, const CommandLookup&) { return AsDot(game); }},
    };
    return forms;
}

const ExportForm* FormOf(const std::string& fileName) {
    const std::string name = Lower(fileName);
    for (const ExportForm& form : ExportForms())
        if (name.ends_with(form.ending))
            return &form;
    return nullptr;
}

play::RecordedRun RunCalled(const std::string& bytes, const std::string& name) {
    play::RecordedRuns recorded = play::ReadRuns(bytes);
    if (!recorded.problem.empty())
        throw KelError(recorded.problem, recorded.problemLine, "");
    for (play::RecordedRun& run : recorded.runs)
        if (name.empty() || run.name == name)
            return std::move(run);
    throw KelError("there is no run" + (name.empty() ? std::string() : " " + name));
}

} // namespace zem::exports
