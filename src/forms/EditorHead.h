#pragma once

class QDialog;
class QString;

namespace zem {

/// Says at the top of an editor what it edits, behind what the windows around it say: "Object lamp in Hall >
/// take".
/// @param what  empty: only what the windows around it say; where they say nothing, there is no head
void ShowWhere(QDialog& form, const QString& what);

} // namespace zem
