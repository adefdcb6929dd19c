#include "gui/GuiPrompter.h"

#include "core/Host.h"

#include <QApplication>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

QWidget* boxParent() {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

int showBox(QMessageBox::Icon icon, const QString& title, const QString& text,
            QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton) {
    QMessageBox box(icon, title, text, buttons, boxParent());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(defaultButton);
    if (buttons.testFlag(QMessageBox::No))
        box.setEscapeButton(QMessageBox::No);
    return box.exec();
}

} // namespace

QString GuiPrompter::title() const {
    const QString main = m_host.mainTitle();
    return main.isEmpty() ? u"Vantrel"_s : main;
}

void GuiPrompter::info(const QString& text) {
    showBox(QMessageBox::Information, title(), text, QMessageBox::Ok, QMessageBox::Ok);
}

void GuiPrompter::stop(const QString& text) {
    showBox(QMessageBox::Critical, title(), text, QMessageBox::Ok, QMessageBox::Ok);
}

bool GuiPrompter::ask(const QString& text) {
    return showBox(QMessageBox::Question, title(), text, QMessageBox::Yes | QMessageBox::No,
                   QMessageBox::Yes) == QMessageBox::Yes;
}

void GuiPrompter::beep() {
    QApplication::beep();
}

} // namespace vantrel
