#pragma once

#include "model/Place.h"

#include <QString>

#include <string>
#include <vector>

class QWidget;

/// How the author gets from an editor that opens to the control that holds a place.
namespace zem {

/// A control of a window, and what is to be selected there.
struct LandingStep {
    QString control;        // the name of its object
    int row = -1;           // of a list, from 0; -1 for none
    QString rowText = {};   // instead of `row`, of a list that leaves entries out: the text of the row
    int selectionBegin = 0; // of a text box, in characters
    int selectionSize = 0;
    QString press =
        {}; // the button that opens the window of the next step; empty where that is in this window
};

/// The steps from the first window that opens for the place.
/// @param path  of ScriptOwners: the place as the author sees it, and what lies behind it
std::vector<LandingStep> StepsTo(const GameModel& game, const std::vector<Place>& path);

/// Goes to the control of a step in this window: its page is shown, and it has the focus. False where the
/// window has no such control.
bool LandOn(QWidget& window, const LandingStep& step);

/// Goes the steps in the modal windows that open next, each as soon as it is shown. Where a control is
/// missing the author is left at the one before.
void LandInNextWindow(const std::vector<LandingStep>& steps);

} // namespace zem
