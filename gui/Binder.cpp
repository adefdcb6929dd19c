#include "gui/Binder.h"

#include "core/Grid.h"
#include "core/Screen.h"
#include "core/Startup.h"
#include "gui/Forms.h"
#include "gui/GridModel.h"
#include "gui/Look.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QHeaderView>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMovie>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// A date box without a date shows this, its minimum, as a blank.
const QDate kNoDate(1800, 1, 1);

std::optional<Key> keyOf(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return event.modifiers().testFlag(Qt::ControlModifier) ? Key::CtrlEnter : Key::Enter;
    case Qt::Key_Tab:
        return Key::Tab;
    case Qt::Key_Escape:
        return Key::Escape;
    case Qt::Key_Backspace:
        return Key::Backspace;
    case Qt::Key_Up:
        return Key::Up;
    case Qt::Key_Down:
        return Key::Down;
    case Qt::Key_F2:
        return Key::F2;
    case Qt::Key_F3:
        return Key::F3;
    case Qt::Key_Delete:
        return Key::Delete;
    default:
        return std::nullopt;
    }
}

bool printable(const QString& text) {
    return !text.isEmpty() && text.at(0).isPrint();
}

// The text of an editing widget as the person sees it.
struct TextState {
    QString text;
    int cursor = 0;
    int selStart = 0;
    int selLength = 0;
};

QLineEdit* lineEditOf(QWidget* widget) {
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        return combo->lineEdit();
    return qobject_cast<QLineEdit*>(widget);
}

TextState textState(QWidget* widget) {
    if (auto* edit = lineEditOf(widget)) {
        const int start = edit->hasSelectedText() ? edit->selectionStart() : edit->cursorPosition();
        return {edit->text(), edit->cursorPosition(), start, static_cast<int>(edit->selectedText().size())};
    }
    if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) {
        const QTextCursor c = edit->textCursor();
        return {edit->toPlainText(), c.position(), c.selectionStart(), c.selectionEnd() - c.selectionStart()};
    }
    return {};
}

// Shows a picture file or resource in a label; a file of several frames plays as a movie.
void showPicture(QLabel& label, const QString& resource) {
    QMovie* playing = label.movie();
    if (playing && playing->fileName() == resource)
        return;
    if (playing) {
        label.setMovie(nullptr);
        playing->deleteLater();
    }
    if (!resource.isEmpty() && QImageReader(resource).supportsAnimation()) {
        auto* movie = new QMovie(resource, {}, &label);
        label.setMovie(movie);
        movie->start();
        return;
    }
    label.setPixmap(resource.isEmpty() ? QPixmap() : QPixmap(resource));
}

// The person is at a control: the mouse, Tab or a shortcut took the focus there, not the program.
bool byPerson(const QFocusEvent& event) {
    const Qt::FocusReason reason = event.reason();
    return reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
           reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

} // namespace

Binder* Binder::create(Screen& screen) {
    InitGuiResources();
    QWidget* form = LoadForm(screen.form.isEmpty() ? screen.name() : screen.form);
    const bool designed = form != nullptr;
    return new Binder(screen, designed ? form : PlainForm(screen.name()), designed);
}

Binder::Binder(Screen& screen, QWidget* form, bool designed)
    : QObject(form), m_screen(&screen), m_form(form), m_designed(designed) {
    for (Control* control : screen.controls()) {
        if (!m_designed)
            AddPlainWidget(m_form, *control);
        bind(*control);
    }
    ApplyColours(m_form, m_form, FamilyColours(screen.process(), screen.colourFamily));
    connect(&screen, &Screen::controlAdded, this, [this](Control* control) {
        if (m_detached)
            return;
        if (!m_designed)
            AddPlainWidget(m_form, *control);
        bind(*control);
        if (QWidget* w = widgetFor(control))
            ApplyColours(w, m_form, FamilyColours(m_screen->process(), m_screen->colourFamily));
    });
    connect(&screen, &Screen::changed, this, [this] {
        if (!m_detached && m_screen->focus() != m_lastFocus)
            applyFocus();
    });
    connect(&screen, &Screen::repaint, this, [this] {
        if (!m_detached)
            ApplyColours(m_form, m_form, FamilyColours(m_screen->process(), m_screen->colourFamily));
    });
    connect(&screen, &QObject::destroyed, this, &Binder::detach);
}

Binder::~Binder() {
    detach();
}

void Binder::detach() {
    if (m_detached)
        return;
    m_detached = true;
    if (m_screen)
        disconnect(m_screen, nullptr, this, nullptr);
    for (const auto& b : m_bindings) {
        if (b->control)
            disconnect(b->control, nullptr, this, nullptr);
        if (b->model)
            b->model->detach();
    }
}

QWidget* Binder::widgetFor(const Control* control) const {
    for (const auto& b : m_bindings) {
        if (control && b->control == control)
            return b->widget;
    }
    return nullptr;
}

void Binder::bind(Control& control) {
    if (qobject_cast<DropDown*>(&control))
        return;
    const QString name = WidgetName(control);
    QWidget* widget = m_form->findChild<QWidget*>(name);
    if (!widget) {
        for (QWidget* w : m_form->findChildren<QWidget*>()) {
            if (w->objectName().compare(name, Qt::CaseInsensitive) == 0) {
                widget = w;
                break;
            }
        }
    }
    if (!widget) {
        qWarning("%s: the form has no widget %s", qPrintable(m_screen->name()), qPrintable(name));
        return;
    }
    auto owned = std::make_unique<Binding>();
    Binding& b = *owned;
    m_bindings.push_back(std::move(owned));
    b.control = &control;
    b.widget = widget;
    wire(b);
    // The line edit inside a combo or a date box hears the keys when it holds the focus itself.
    QList<QWidget*> parts{widget};
    if (qobject_cast<QComboBox*>(widget) || qobject_cast<QAbstractSpinBox*>(widget)) {
        for (QLineEdit* edit : widget->findChildren<QLineEdit*>())
            parts.append(edit);
    }
    for (QWidget* part : parts) {
        part->installEventFilter(this);
        m_byObject.insert(part, &b);
    }
    connect(&control, &Control::changed, this, [this, &b] { refresh(b); });
    connect(&control, &QObject::destroyed, this, &Binder::detach);
    refresh(b);
}

void Binder::wire(Binding& b) {
    QWidget* w = b.widget;
    Control& c = *b.control;
    switch (c.kind()) {
    case ControlKind::TextBox:
        wireText(b);
        break;
    case ControlKind::CheckBox:
    case ControlKind::Option:
    case ControlKind::Button:
        if (auto* button = qobject_cast<QAbstractButton*>(w)) {
            // The click moves the focus, through the screen, when the control takes it.
            button->setFocusPolicy(Qt::TabFocus);
            if (auto* radio = qobject_cast<QRadioButton*>(w))
                radio->setAutoExclusive(false);
            if (auto* push = qobject_cast<QPushButton*>(w))
                push->setAutoDefault(false);
            connect(button, &QAbstractButton::clicked, this, [this, &b] {
                if (!live(b))
                    return;
                m_screen->click(*b.control);
                refresh(b);
            });
        }
        break;
    case ControlKind::Combo:
        if (auto* combo = qobject_cast<QComboBox*>(w)) {
            combo->setEditable(qobject_cast<ComboBox*>(&c)->editable);
            if (QLineEdit* edit = combo->lineEdit()) {
                combo->setCompleter(nullptr);
                connect(edit, &QLineEdit::textEdited, this, [this, &b](const QString& text) {
                    if (!m_updating)
                        textEdited(b, text, -1);
                });
            }
            connect(combo, &QComboBox::activated, this, [this, &b](int row) {
                if (!live(b))
                    return;
                auto& list = *qobject_cast<ComboBox*>(b.control.data());
                if (row >= 0 && row < list.count())
                    m_screen->choose(list, list.rows().at(static_cast<size_t>(row)).columns);
                refresh(b);
            });
        }
        break;
    case ControlKind::List:
        if (auto* list = qobject_cast<QListWidget*>(w)) {
            connect(list, &QListWidget::currentRowChanged, this, [this, &b](int row) {
                if (m_updating || !live(b))
                    return;
                auto& control = *qobject_cast<ListControl*>(b.control.data());
                if (row != control.current() && !ruled([&] { return m_screen->selectRow(control, row); }))
                    applyFocus();
                refresh(b);
            });
            connect(list, &QListWidget::itemChanged, this, [this, &b, list](QListWidgetItem* item) {
                if (m_updating || !live(b))
                    return;
                auto& control = *qobject_cast<ListControl*>(b.control.data());
                const int row = list->row(item);
                const bool on = item->checkState() == Qt::Checked;
                if (row >= 0 && row < control.count() &&
                    control.rows().at(static_cast<size_t>(row)).ticked != on &&
                    !ruled([&] { return m_screen->selectRow(control, row, on); }))
                    applyFocus();
                refresh(b);
            });
        }
        break;
    case ControlKind::DateBox:
        if (auto* date = qobject_cast<QDateEdit*>(w)) {
            date->setLocale(QLocale::c());
            date->setDisplayFormat(u"dd-MMM-yyyy"_s);
            date->setMinimumDate(kNoDate);
            date->setSpecialValueText(u" "_s);
            date->setCalendarPopup(true);
            connect(date, &QDateEdit::dateChanged, this, [this, &b](QDate value) {
                if (m_updating || !live(b))
                    return;
                m_screen->setDate(*qobject_cast<DateBox*>(b.control.data()),
                                  value == kNoDate ? QDate() : value);
                refresh(b);
            });
        }
        break;
    case ControlKind::TabStrip: {
        auto changeTab = [this, &b](int page) {
            if (m_updating || !live(b))
                return;
            auto& strip = *qobject_cast<TabStrip*>(b.control.data());
            if (page != strip.current())
                m_screen->changeTab(strip, page);
            refresh(b);
        };
        if (auto* tabs = qobject_cast<QTabWidget*>(w))
            connect(tabs, &QTabWidget::currentChanged, this, changeTab);
        else if (auto* bar = qobject_cast<QTabBar*>(w))
            connect(bar, &QTabBar::currentChanged, this, changeTab);
        break;
    }
    case ControlKind::Grid:
        wireGrid(b);
        break;
    case ControlKind::Image:
        if (c.onClick) {
            w->setCursor(Qt::PointingHandCursor);
            w->setFocusPolicy(Qt::StrongFocus);
        }
        if (auto* caption = m_form->findChild<QLabel*>(w->objectName() + u"_Caption"_s)) {
            b.caption = caption;
            caption->installEventFilter(this);
            m_byObject.insert(caption, &b);
            if (c.onClick)
                caption->setCursor(Qt::PointingHandCursor);
        }
        break;
    case ControlKind::Label:
        // An option of the launcher: pointed at, clicked, or reached by the keyboard.
        if (c.onClick) {
            w->setCursor(Qt::PointingHandCursor);
            w->setFocusPolicy(Qt::StrongFocus);
        }
        break;
    case ControlKind::Frame:
        break;
    }
}

void Binder::wireText(Binding& b) {
    auto* box = qobject_cast<TextBox*>(b.control.data());
    if (auto* edit = qobject_cast<QLineEdit*>(b.widget)) {
        // Edits that come without a key (the context menu, dropping text) reach the logic as a paste.
        connect(edit, &QLineEdit::textEdited, this, [this, &b, edit](const QString& text) {
            if (!m_updating)
                textEdited(b, text, edit->cursorPosition());
        });
        connect(edit, &QLineEdit::cursorPositionChanged, this, [this, &b, box](int, int position) {
            if (!m_updating && live(b))
                box->setCursor(position);
        });
    } else if (auto* edit = qobject_cast<QPlainTextEdit*>(b.widget)) {
        connect(edit, &QPlainTextEdit::textChanged, this, [this, &b, edit] {
            if (!m_updating)
                textEdited(b, edit->toPlainText(), edit->textCursor().position());
        });
        connect(edit, &QPlainTextEdit::cursorPositionChanged, this, [this, &b, box, edit] {
            if (!m_updating && live(b))
                box->setCursor(edit->textCursor().position());
        });
    }
}

void Binder::wireGrid(Binding& b) {
    auto* view = qobject_cast<QTableView*>(b.widget);
    if (!view)
        return;
    auto* model = new GridModel(*qobject_cast<Grid*>(b.control.data()), view);
    b.model = model;
    view->setModel(model);
    view->setItemDelegate(new GridDelegate(view));
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setSelectionBehavior(QAbstractItemView::SelectItems);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                          QAbstractItemView::AnyKeyPressed);
    view->setAlternatingRowColors(true);
    view->horizontalHeader()->setStretchLastSection(true);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 10);
    const auto setWidths = [view, model] {
        for (int v = 0; v < model->columnCount(); ++v) {
            const GridColumn* column = model->columnAt(v);
            if (column && column->width > 0)
                view->setColumnWidth(v, column->width * view->fontMetrics().averageCharWidth() + 16);
        }
    };
    setWidths();
    connect(model, &QAbstractItemModel::modelReset, view, setWidths);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, &b, model](const QModelIndex& current) {
                if (m_updating || !current.isValid())
                    return;
                // The cell the person stands on is the grid's current column; Enter's meaning depends on it.
                if (const GridColumn* column = model->columnAt(current.column()); column && live(b))
                    qobject_cast<Grid*>(b.control.data())->standOn(column->number);
                const int row = current.row();
                QMetaObject::invokeMethod(
                    this, [this, &b, row] { gridRowChosen(b, row); }, Qt::QueuedConnection);
            });
    // A click on a cell of a grid that has a rule for it.
    connect(view, &QAbstractItemView::clicked, this, [this, &b, model](const QModelIndex& index) {
        auto& grid = *qobject_cast<Grid*>(b.control.data());
        const GridColumn* column = model->columnAt(index.column());
        if (m_updating || !live(b) || !grid.onCellClick || !column)
            return;
        if (m_screen->focus() == &grid || m_screen->moveFocus(&grid))
            grid.clickCell(index.row(), column->number);
    });
    // A rule refused what was typed or picked: the cell opens again.
    connect(model, &GridModel::refused, view, [view](const QModelIndex& index) {
        const QPersistentModelIndex cell(index);
        QMetaObject::invokeMethod(
            view,
            [view, cell] {
                if (cell.isValid()) {
                    view->setCurrentIndex(cell);
                    view->edit(cell);
                }
            },
            Qt::QueuedConnection);
    });
}

void Binder::gridRowChosen(Binding& b, int row) {
    if (!live(b))
        return;
    auto* view = qobject_cast<QTableView*>(b.widget);
    auto& grid = *qobject_cast<Grid*>(b.control.data());
    // Only a move the person made, and that still stands, goes to the grid.
    if (row == grid.currentRow() || view->currentIndex().row() != row)
        return;
    if (m_screen->focus() != &grid && !m_screen->moveFocus(&grid)) {
        if (live(b)) {
            refresh(b);
            applyFocus();
        }
        return;
    }
    if (live(b))
        grid.goToRow(row);
    if (live(b))
        refresh(b);
}

void Binder::refresh(Binding& b) {
    if (!live(b))
        return;
    Control& c = *b.control;
    QWidget* w = b.widget;
    ++m_updating;
    w->setEnabled(c.enabled());
    if (w->isHidden() == c.visible())
        w->setVisible(c.visible());
    if (b.caption) {
        b.caption->setText(c.caption());
        b.caption->setEnabled(c.enabled());
        if (b.caption->isHidden() == c.visible())
            b.caption->setVisible(c.visible());
    }
    switch (c.kind()) {
    case ControlKind::TextBox:
        refreshText(b);
        break;
    case ControlKind::CheckBox:
    case ControlKind::Option:
    case ControlKind::Button:
        if (auto* button = qobject_cast<QAbstractButton*>(w)) {
            if (!c.caption().isEmpty())
                button->setText(c.caption());
            if (auto* check = qobject_cast<CheckBox*>(&c))
                button->setChecked(check->value());
            else if (auto* option = qobject_cast<OptionButton*>(&c))
                button->setChecked(option->value());
        }
        break;
    case ControlKind::Combo:
    case ControlKind::List:
        refreshList(b);
        break;
    case ControlKind::DateBox:
        if (auto* date = qobject_cast<QDateEdit*>(w)) {
            const QDate value = qobject_cast<DateBox*>(&c)->date();
            date->setDate(value.isValid() ? value : kNoDate);
        }
        break;
    case ControlKind::TabStrip: {
        auto& strip = *qobject_cast<TabStrip*>(&c);
        if (auto* tabs = qobject_cast<QTabWidget*>(w)) {
            for (int i = 0; i < strip.tabs.size() && i < tabs->count(); ++i)
                tabs->setTabText(i, strip.tabs.at(i));
            tabs->setCurrentIndex(strip.current());
        } else if (auto* bar = qobject_cast<QTabBar*>(w)) {
            for (int i = 0; i < strip.tabs.size(); ++i) {
                if (i < bar->count())
                    bar->setTabText(i, strip.tabs.at(i));
                else
                    bar->addTab(strip.tabs.at(i));
            }
            bar->setCurrentIndex(strip.current());
        }
        break;
    }
    case ControlKind::Grid:
        refreshGrid(b);
        break;
    case ControlKind::Label:
    case ControlKind::Frame:
        if (auto* label = qobject_cast<QLabel*>(w)) {
            label->setTextFormat(qobject_cast<Label*>(&c)->rich() ? Qt::RichText : Qt::PlainText);
            label->setText(c.caption());
            paintTone(*label, qobject_cast<Label*>(&c)->tone());
        } else if (auto* frame = qobject_cast<QGroupBox*>(w); frame && !c.caption().isEmpty()) {
            frame->setTitle(c.caption());
        }
        break;
    case ControlKind::Image:
        if (auto* label = qobject_cast<QLabel*>(w)) {
            showPicture(*label, qobject_cast<ImageBox*>(&c)->resource());
            if (!b.caption)
                label->setToolTip(c.caption());
        }
        break;
    }
    --m_updating;
}

// A label that tells a class is painted in the class's colours; one that told a class and no longer does
// is painted grey. Labels that never told one keep the form's own look.
void Binder::paintTone(QLabel& label, Tone tone) {
    if (tone == Tone::None && !label.property("toned").toBool())
        return;
    label.setProperty("toned", true);
    static const char* const styles[] = {
        "color: #6b7280;",
        "background: #d9f2df; color: #14532d; border-radius: 3px; padding: 1px 4px;",
        "background: #fad4d4; color: #8b1111; border-radius: 3px; padding: 1px 4px; font-weight: bold;",
        "background: #fdefc3; color: #7a4b00; border-radius: 3px; padding: 1px 4px;",
        "background: #d6e6fa; color: #0c3b73; border-radius: 3px; padding: 1px 4px;",
        "background: #e9def7; color: #4b2a7a; border-radius: 3px; padding: 1px 4px;",
    };
    label.setStyleSheet(QString::fromLatin1(styles[static_cast<int>(tone)]));
}

void Binder::refreshText(Binding& b) {
    auto& box = *qobject_cast<TextBox*>(b.control.data());
    if (auto* edit = qobject_cast<QLineEdit*>(b.widget)) {
        if (box.maxLength() > 0)
            edit->setMaxLength(box.maxLength());
        if (edit->text() != box.text())
            edit->setText(box.text());
        if (edit->cursorPosition() != box.cursor())
            edit->setCursorPosition(box.cursor());
        edit->setReadOnly(box.locked());
    } else if (auto* edit = qobject_cast<QPlainTextEdit*>(b.widget)) {
        if (edit->toPlainText() != box.text())
            edit->setPlainText(box.text());
        QTextCursor cursor = edit->textCursor();
        if (cursor.position() != box.cursor()) {
            cursor.setPosition(std::min(box.cursor(), static_cast<int>(edit->toPlainText().size())));
            edit->setTextCursor(cursor);
        }
        edit->setReadOnly(box.locked());
    }
}

void Binder::refreshList(Binding& b) {
    auto& list = *qobject_cast<ListControl*>(b.control.data());
    QStringList shown;
    shown.reserve(list.count());
    for (const ListRow& row : list.rows())
        shown.append(row.columns.join(u'\t'));
    if (auto* combo = qobject_cast<QComboBox*>(b.widget)) {
        if (shown != b.rowsShown) {
            fillCombo(*combo, list);
            b.rowsShown = shown;
        }
        if (combo->currentIndex() != list.current())
            combo->setCurrentIndex(list.current());
        auto* box = qobject_cast<ComboBox*>(&list);
        if (box && combo->isEditable() && combo->currentText() != box->text())
            combo->setEditText(box->text());
    } else if (auto* view = qobject_cast<QListWidget*>(b.widget)) {
        auto* box = qobject_cast<ListBox*>(&list);
        const bool checks = box && box->checkBoxes;
        if (shown != b.rowsShown) {
            view->clear();
            for (const ListRow& row : list.rows()) {
                auto* item = new QListWidgetItem(row.columns.join(u"   "_s), view);
                if (checks) {
                    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
                    item->setCheckState(row.ticked ? Qt::Checked : Qt::Unchecked);
                }
            }
            b.rowsShown = shown;
        }
        for (int r = 0; checks && r < list.count(); ++r) {
            const Qt::CheckState state =
                list.rows().at(static_cast<size_t>(r)).ticked ? Qt::Checked : Qt::Unchecked;
            if (view->item(r)->checkState() != state)
                view->item(r)->setCheckState(state);
        }
        if (view->currentRow() != list.current())
            view->setCurrentRow(list.current());
    }
}

void Binder::refreshGrid(Binding& b) {
    auto* view = qobject_cast<QTableView*>(b.widget);
    if (!view || !b.model)
        return;
    const auto& grid = *qobject_cast<Grid*>(b.control.data());
    const QModelIndex current = view->currentIndex();
    if (grid.currentRow() < b.model->rowCount() && current.row() != grid.currentRow()) {
        int column = b.model->viewColumnOf(grid.currentColumn());
        if (column < 0)
            column = std::max(current.column(), 0);
        view->setCurrentIndex(b.model->index(grid.currentRow(), column));
    }
}

bool Binder::eventFilter(QObject* watched, QEvent* event) {
    if (m_detached || m_updating)
        return false;
    Binding* b = m_byObject.value(watched);
    if (!b || !b->control)
        return false;
    const ControlKind kind = b->control->kind();
    const bool option = (kind == ControlKind::Label || kind == ControlKind::Image) && b->control->onClick;
    const bool image = kind == ControlKind::Image || option;
    switch (event->type()) {
    case QEvent::KeyPress:
        if (option)
            return optionKey(*b, static_cast<QKeyEvent*>(event));
        return keyPress(*b, static_cast<QKeyEvent*>(event));
    case QEvent::FocusOut:
        if (option && b->control->onHover)
            b->control->onHover(false);
        return false;
    case QEvent::FocusIn: {
        // An option the person reaches is pointed at; one the program gives the focus to is already known to
        // it.
        const bool person = byPerson(*static_cast<QFocusEvent*>(event));
        if (option) {
            if (person && b->control->onHover)
                b->control->onHover(true);
            return false;
        }
        if (!m_settingFocus && person)
            focusIn(*b);
        return false;
    }
    case QEvent::Enter:
    case QEvent::Leave:
        if (image && watched == b->widget && b->control->onHover)
            b->control->onHover(event->type() == QEvent::Enter);
        return false;
    case QEvent::MouseButtonPress:
        return image && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (!image || mouse->button() != Qt::LeftButton)
            return false;
        if (static_cast<QWidget*>(watched)->rect().contains(mouse->position().toPoint()))
            m_screen->click(*b->control);
        return true;
    }
    default:
        return false;
    }
}

// Enter or the space bar picks an option; the arrows move to the nearest option that way, as the options are
// laid out on the form.
bool Binder::optionKey(Binding& b, QKeyEvent* event) {
    QPoint step;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        m_screen->click(*b.control);
        return true;
    case Qt::Key_Up:
        step = {0, -1};
        break;
    case Qt::Key_Down:
        step = {0, 1};
        break;
    case Qt::Key_Left:
        step = {-1, 0};
        break;
    case Qt::Key_Right:
        step = {1, 0};
        break;
    default:
        return false;
    }
    const QPoint from = b.widget->mapTo(m_form, b.widget->rect().center());
    QWidget* nearest = nullptr;
    int best = 0;
    for (const auto& other : m_bindings) {
        QWidget* w = other->widget;
        const Control* c = other->control;
        if (w == b.widget || !c || !c->onClick || !w->isVisible() || !w->isEnabled() ||
            (c->kind() != ControlKind::Label && c->kind() != ControlKind::Image))
            continue;
        const QPoint to = w->mapTo(m_form, w->rect().center()) - from;
        const int along = to.x() * step.x() + to.y() * step.y();
        const int across = std::abs(to.x() * step.y() + to.y() * step.x());
        // Within a quarter turn of the arrow's way, the nearest counting the distance off it twice.
        if (along <= 0 || across > along)
            continue;
        if (const int score = along + 2 * across; !nearest || score < best) {
            nearest = w;
            best = score;
        }
    }
    if (nearest)
        nearest->setFocus(step.x() + step.y() > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool Binder::keyPress(Binding& b, QKeyEvent* event) {
    Control& c = *b.control;
    const std::optional<Key> key = keyOf(*event);
    const Qt::KeyboardModifiers held =
        event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    // Shortcuts (copy, paste, mnemonics) stay with the widgets; what they change reaches the logic as a
    // paste.
    if (held != Qt::NoModifier && key != Key::CtrlEnter)
        return false;
    // Arrows keep their usual meaning unless the screen takes them.
    if ((key == Key::Up || key == Key::Down) && c.onKeyDown)
        return c.onKeyDown(*key);
    // Delete keeps its usual meaning unless the screen takes it.
    if ((key == Key::Up || key == Key::Down || key == Key::Delete) && !c.onKeyDown) {
        if (key != Key::Delete)
            return false;
        if (auto* grid = qobject_cast<Grid*>(&c)) {
            if (m_screen->pressKey(c, Key::Delete) && live(b))
                grid->deleteRow();
            return true;
        }
        if (auto* date = qobject_cast<DateBox*>(&c)) {
            m_screen->setDate(*date, {});
            return true;
        }
        return false;
    }
    switch (c.kind()) {
    case ControlKind::TextBox:
        return textKey(b, event, key);
    case ControlKind::Combo:
        if (!qobject_cast<ComboBox*>(&c)->editable)
            break;
        if (key == Key::Backspace || key == Key::Delete)
            return false;
        if (!key && printable(event->text())) {
            removeSelection(b);
            for (QChar ch : event->text()) {
                if (!live(b) || !m_screen->pressKey(c, Key::Character, ch))
                    break;
            }
            return true;
        }
        break;
    case ControlKind::Grid:
        // Inside a grid the keys move between the cells and edit them; the screen hears its function keys.
        if (key == Key::F2 || key == Key::F3 || key == Key::Delete) {
            m_screen->pressKey(c, *key);
            return true;
        }
        // Enter is the screen's where it has a meaning for the line (leaving an empty new line, going down).
        if (key == Key::Enter && c.onKeyDown)
            return c.onKeyDown(Key::Enter);
        return false;
    case ControlKind::Button:
        if (key == Key::Enter) {
            m_screen->click(c);
            return true;
        }
        break;
    default:
        break;
    }
    if (!key || key == Key::Backspace)
        return false;
    m_screen->pressKey(c, *key);
    return true;
}

bool Binder::textKey(Binding& b, QKeyEvent* event, std::optional<Key> key) {
    auto& box = *qobject_cast<TextBox*>(b.control.data());
    const TextState state = textState(b.widget);
    if (key) {
        // Deleting a selection is an edit of the widget, handed over as a paste.
        if ((key == Key::Backspace || key == Key::Delete) && state.selLength > 0)
            return false;
        box.setCursor(state.cursor);
        m_screen->pressKey(box, *key);
        return true;
    }
    if (!printable(event->text()))
        return false;
    removeSelection(b);
    for (QChar ch : event->text()) {
        if (!live(b) || !m_screen->pressKey(box, Key::Character, ch))
            break;
    }
    return true;
}

void Binder::removeSelection(Binding& b) {
    const TextState state = textState(b.widget);
    if (state.selLength == 0) {
        if (auto* box = qobject_cast<TextBox*>(b.control.data()))
            box->setCursor(state.cursor);
        return;
    }
    QString text = state.text;
    text.remove(state.selStart, state.selLength);
    textEdited(b, text, state.selStart);
}

void Binder::textEdited(Binding& b, const QString& text, int cursor) {
    if (!live(b))
        return;
    m_screen->paste(*b.control, text);
    if (!live(b))
        return;
    if (auto* box = qobject_cast<TextBox*>(b.control.data()); box && cursor >= 0)
        box->setCursor(cursor);
    refresh(b);
}

void Binder::focusIn(Binding& b) {
    Control* control = b.control;
    if (!control->canTakeFocus() || m_screen->focus() == control)
        return;
    // The move runs once the widgets have settled: a leave rule may show a message.
    const QPointer<Control> target(control);
    QMetaObject::invokeMethod(
        this, [this, target] { personFocus(target); }, Qt::QueuedConnection);
}

// Runs a step of the person that may run rules and show their messages; a step that arrives while
// another one's message is open is dropped, so that one rule never speaks twice.
bool Binder::ruled(const std::function<bool()>& step) {
    if (m_ruling)
        return true;
    ++m_ruling;
    const bool done = step();
    --m_ruling;
    return done;
}

void Binder::personFocus(const QPointer<Control>& target) {
    if (m_detached || !target || !m_screen || m_ruling)
        return;
    if (m_screen->focus() == target) {
        m_lastFocus = target;
        return;
    }
    QWidget* w = widgetFor(target);
    QWidget* holder = w ? w->window()->focusWidget() : nullptr;
    if (!w || !holder || !(holder == w || w->isAncestorOf(holder)))
        return;
    if (ruled([&] { return m_screen->moveFocus(target); }))
        m_lastFocus = target;
    else
        applyFocus();
}

void Binder::applyFocus() {
    if (m_detached || !m_screen)
        return;
    Control* focus = m_screen->focus();
    m_lastFocus = focus;
    QWidget* w = widgetFor(focus);
    if (!w)
        return;
    QWidget* holder = w->window()->focusWidget();
    if (holder && (holder == w || w->isAncestorOf(holder)) && w->window()->isActiveWindow())
        return;
    ++m_settingFocus;
    w->setFocus(Qt::OtherFocusReason);
    --m_settingFocus;
}

} // namespace vantrel
