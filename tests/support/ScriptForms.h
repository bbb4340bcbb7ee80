#pragma once

#include "script/frmScriptLines.h"
#include "support/WhenOpen.h"

namespace zem::test {

/// Confirms the next script editor as it opens.
inline void ConfirmNextScript() {
    WhenOpen<frmScriptLines>([](frmScriptLines& script) { Click(script, "butOK"); });
}

/// Answers the next script editor by taking away the first line of the script, which must hold the text.
inline void CutNextScript(const char* text = "") {
    WhenOpen<frmScriptLines>([text](frmScriptLines& script) {
        const QStringList lines = Rows(script, "lstFriendlyLines");
        EXPECT_TRUE(!lines.isEmpty() && lines[0].contains(QLatin1String(text))) << text;
        SelectRow(script, "lstFriendlyLines", 0);
        Click(script, "butRemove");
        Click(script, "butOK");
    });
}

} // namespace zem::test
