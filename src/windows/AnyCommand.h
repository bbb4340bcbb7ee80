#pragma once

#include "forms/ActionRanking.h"

#include <QString>

#include <functional>
#include <vector>

class QWidget;

namespace zem {

/// Something that an author can do, whatever it is that does it.
struct AnyCommand {
    Findable found;
    QString name; // by which it is remembered; unique
    std::function<void()> run;
};

/// All commands of the menus, panels and lists of a window, with their paths and keys.
std::vector<AnyCommand> CommandsOf(QWidget& window);

/// A heading of the manual.
struct ManualPage {
    QString place;
    QString title;
};

/// The headings of the manual, in its order; none when it cannot be read.
/// @param file  the path of ZEM.HTM
std::vector<ManualPage> PagesOfManual(const QString& file);

/// A setting of the options window.
struct OptionField {
    QString control; // the name of its object
    QString title;
};

/// All of them, in the order of the window.
std::vector<OptionField> OptionFields();

} // namespace zem
