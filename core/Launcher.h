#pragma once

#include <QString>

namespace vantrel {

// The screen an option of the launcher opens, with the mode text handed to it; an empty screen when the
// option's text is not known.
struct LauncherTarget {
    QString screen;
    QString mode;
    bool query = false; // a look-up from the launcher: nothing is selected in it
};

// A second-level option of the main (run mode 1) or the front-desk (2) launcher, by its text.
LauncherTarget LauncherSecondLevel(int runMode, const QString& option);
// A third-level option, by its text and the text of the second-level option above it.
LauncherTarget LauncherThirdLevel(const QString& secondLevel, const QString& option);

} // namespace vantrel
