#include "gui/MainWindow.h"

#include <QCloseEvent>
#include <QPainter>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// What the central area shows when no screen is open in it: a calm surface with the window's title.
class Backdrop : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QLinearGradient gradient(rect().topLeft(), rect().bottomRight());
        gradient.setColorAt(0.0, QColor(0xEE, 0xF5, 0xF7));
        gradient.setColorAt(1.0, QColor(0xD9, 0xE9, 0xEE));
        painter.fillRect(rect(), gradient);
        QFont font = painter.font();
        font.setPointSizeF(font.pointSizeF() * 2.4);
        font.setWeight(QFont::Light);
        painter.setFont(font);
        painter.setPen(QColor(0x0E, 0x5E, 0x6F, 0x90));
        painter.drawText(rect().adjusted(0, 0, -36, -28), Qt::AlignRight | Qt::AlignBottom,
                         window()->windowTitle());
    }
};

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_stack(new QStackedWidget(this)), m_backdrop(new Backdrop(m_stack)) {
    setMinimumSize(1024, 700);
    m_stack->addWidget(m_backdrop);
    setCentralWidget(m_stack);
}

void MainWindow::addScreen(QWidget* form) {
    m_stack->addWidget(form);
    m_stack->setCurrentWidget(form);
}

void MainWindow::removeScreen(QWidget* form) {
    m_stack->removeWidget(form);
    m_stack->setCurrentIndex(m_stack->count() - 1);
}

void MainWindow::showFirstScreen() {
    if (m_stack->count() > 1)
        m_stack->setCurrentIndex(1);
}

QWidget* MainWindow::frontScreen() const {
    QWidget* front = m_stack->currentWidget();
    return front == m_backdrop ? nullptr : front;
}

void MainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowTitleChange)
        m_backdrop->update();
    QMainWindow::changeEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (canClose && !canClose())
        event->ignore();
    else
        event->accept();
}

} // namespace vantrel
