#pragma once

class QApplication;

namespace vantrel {

// The program's look: the Fusion style with a light, calm palette, a readable font and the window icon.
void ApplyLook(QApplication& app);

// Makes the forms and pictures built into the program available under `:/forms/` and `:/images/`.
void InitGuiResources();

} // namespace vantrel
