#include "gui/Look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QIcon>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

static void initFormsResource() {
    Q_INIT_RESOURCE(forms);
}

namespace vantrel {

void InitGuiResources() {
    static const bool done = [] {
        initFormsResource();
        return true;
    }();
    Q_UNUSED(done);
}

namespace {

// Fusion, with the program's own message box pictures and plain text buttons in dialogs.
class ClinicStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override {
        switch (icon) {
        case SP_MessageBoxInformation:
            return QIcon(u":/images/MsgInfo.png"_s);
        case SP_MessageBoxCritical:
            return QIcon(u":/images/MsgStop.png"_s);
        case SP_MessageBoxQuestion:
            return QIcon(u":/images/MsgQuestion.png"_s);
        default:
            return QProxyStyle::standardIcon(icon, option, widget);
        }
    }
};

} // namespace

void ApplyLook(QApplication& app) {
    InitGuiResources();
    QApplication::setStyle(new ClinicStyle(QStyleFactory::create(u"Fusion"_s)));

    const QColor ink(0x1F, 0x2D, 0x3A);
    const QColor teal(0x0F, 0x7C, 0x8C);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xF3, 0xF6, 0xF8));
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xEE, 0xF4, 0xF6));
    palette.setColor(QPalette::Text, ink);
    palette.setColor(QPalette::Button, QColor(0xE8, 0xEE, 0xF2));
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::Highlight, teal);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFD, 0xE8));
    palette.setColor(QPalette::ToolTipText, ink);
    palette.setColor(QPalette::PlaceholderText, QColor(0x8A, 0x97, 0xA3));
    palette.setColor(QPalette::Link, teal);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x9A, 0xA5, 0xB0));
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xF0, 0xF2, 0xF4));
    QApplication::setPalette(palette);

    QFont font = QApplication::font();
    const QStringList families = QFontDatabase::families();
    for (const QString& family : {u"Noto Sans"_s, u"DejaVu Sans"_s}) {
        if (families.contains(family)) {
            font.setFamily(family);
            break;
        }
    }
    font.setPointSize(10);
    QApplication::setFont(font);
    app.setWindowIcon(QIcon(u":/images/vantrel.png"_s));
}

} // namespace vantrel
