#include "gui/Forms.h"

#include "core/Grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QUiLoader>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

QColor windowsColour(unsigned value) {
    return QColor(static_cast<int>(value & 0xFF), static_cast<int>((value >> 8) & 0xFF),
                  static_cast<int>((value >> 16) & 0xFF));
}

// Widgets named "EXOBJ..." keep their own colours, and so does everything inside them.
bool keepsOwnColours(const QWidget* widget, const QWidget* form) {
    for (const QWidget* w = widget; w && w != form; w = w->parentWidget()) {
        if (w->objectName().startsWith(u"EXOBJ"_s, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

// The parts inside a composite widget take its colours from it.
bool insideComposite(const QWidget* widget, const QWidget* form) {
    for (const QWidget* w = widget->parentWidget(); w && w != form; w = w->parentWidget()) {
        if (qobject_cast<const QComboBox*>(w) || qobject_cast<const QAbstractSpinBox*>(w) ||
            qobject_cast<const QAbstractItemView*>(w))
            return true;
    }
    return false;
}

} // namespace

QString WidgetName(const Control& control) {
    return control.index() < 0 ? control.name() : u"%1_%2"_s.arg(control.name()).arg(control.index());
}

QWidget* LoadForm(const QString& screenName) {
    QFile file(u":/forms/%1.ui"_s.arg(screenName));
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    QUiLoader loader;
    QWidget* form = loader.load(&file);
    if (!form)
        qWarning("%s: %s", qPrintable(screenName), qPrintable(loader.errorString()));
    return form;
}

QWidget* PlainForm(const QString& screenName) {
    auto* form = new QWidget;
    form->setObjectName(screenName);
    auto* outer = new QVBoxLayout(form);
    auto* scroll = new QScrollArea(form);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* inner = new QWidget(scroll);
    auto* rows = new QFormLayout(inner);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    scroll->setWidget(inner);
    outer->addWidget(scroll);
    return form;
}

void AddPlainWidget(QWidget* form, const Control& control) {
    auto* rows = form->findChild<QFormLayout*>();
    const QString name = control.fullName();
    QWidget* w = nullptr;
    bool labelled = true;
    switch (control.kind()) {
    case ControlKind::TextBox:
        if (qobject_cast<const TextBox*>(&control)->multiLine())
            w = new QPlainTextEdit;
        else
            w = new QLineEdit;
        break;
    case ControlKind::CheckBox:
        w = new QCheckBox(name);
        labelled = false;
        break;
    case ControlKind::Option:
        w = new QRadioButton(name);
        labelled = false;
        break;
    case ControlKind::Combo:
        w = new QComboBox;
        break;
    case ControlKind::List:
        if (qobject_cast<const DropDown*>(&control))
            return;
        w = new QListWidget;
        break;
    case ControlKind::Button:
        w = new QPushButton(name);
        labelled = false;
        break;
    case ControlKind::DateBox:
        w = new QDateEdit;
        break;
    case ControlKind::TabStrip:
        w = new QTabBar;
        break;
    case ControlKind::Grid:
        w = new QTableView;
        w->setMinimumHeight(200);
        break;
    case ControlKind::Label:
        w = new QLabel;
        qobject_cast<QLabel*>(w)->setWordWrap(true);
        labelled = false;
        break;
    case ControlKind::Frame:
        w = new QGroupBox(name);
        labelled = false;
        break;
    case ControlKind::Image:
        w = new QLabel;
        break;
    }
    w->setObjectName(WidgetName(control));
    if (labelled)
        rows->addRow(name, w);
    else
        rows->addRow(w);
}

void ApplyColours(QWidget* root, const QWidget* form, const ColourPair& colours) {
    if (!colours.valid)
        return;
    const QColor fore = windowsColour(colours.fore);
    const QColor back = windowsColour(colours.back);
    QList<QWidget*> widgets = root->findChildren<QWidget*>();
    widgets.prepend(root);
    for (QWidget* w : widgets) {
        if (w == form || keepsOwnColours(w, form) || insideComposite(w, form))
            continue;
        QPalette palette = w->palette();
        if (qobject_cast<QLineEdit*>(w) || qobject_cast<QAbstractScrollArea*>(w) ||
            qobject_cast<QComboBox*>(w) || qobject_cast<QAbstractSpinBox*>(w)) {
            if (qobject_cast<QScrollArea*>(w))
                continue;
            palette.setColor(QPalette::Text, fore);
            palette.setColor(QPalette::Base, back);
            palette.setColor(QPalette::AlternateBase, back.darker(106));
            if (qobject_cast<QComboBox*>(w)) {
                palette.setColor(QPalette::ButtonText, fore);
                palette.setColor(QPalette::Button, back);
            }
        } else if (qobject_cast<QLabel*>(w) || qobject_cast<QGroupBox*>(w) || qobject_cast<QCheckBox*>(w) ||
                   qobject_cast<QRadioButton*>(w) || qobject_cast<QTabWidget*>(w) ||
                   qobject_cast<QTabBar*>(w)) {
            palette.setColor(QPalette::WindowText, fore);
            if (qobject_cast<QLabel*>(w))
                w->setAutoFillBackground(false);
        } else {
            continue;
        }
        w->setPalette(palette);
    }
}

} // namespace vantrel
