#pragma once

#include "core/Controls.h"
#include "core/Startup.h"

#include <QString>

class QWidget;

namespace vantrel {

// The widget that shows a control: "Name", or "Name_3" for the element Name(3) of a control array.
QString WidgetName(const Control& control);

// The screen's designed form `:/forms/<screen name>.ui`, or nullptr when the program has none.
QWidget* LoadForm(const QString& screenName);

// A plain form for a screen without a designed one: its controls one under the other, each named as a
// designed form would name it, so that every screen can be shown at all.
QWidget* PlainForm(const QString& screenName);
void AddPlainWidget(QWidget* form, const Control& control);

// Gives the widgets of a form the colours of the screen's family: text boxes, combos, lists and grids their
// fore and back colours, labels, frames, tick boxes, options and tab strips their fore colour. A widget
// named "EXOBJ..." keeps its own colours.
void ApplyColours(QWidget* root, const QWidget* form, const ColourPair& colours);

} // namespace vantrel
