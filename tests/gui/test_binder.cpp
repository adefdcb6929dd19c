#include "core/KeyFilters.h"
#include "gui/Binder.h"
#include "tests/support/Application.h"
#include "tests/support/Fakes.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

using vantrel::testing::ensureApplication;

// A name box that takes capitals only and refuses to be left blank, a second box, a button, a tick box,
// a combo, a clickable picture and a grid over a staging table.
class Sample : public Screen {
public:
    explicit Sample(Process& process) : Screen(process, u"BinderSample"_s) {
        auto& name = add<TextBox>(u"Txt_Name"_s);
        name.keyFilter = [](int key, const QString&, int) { return KeyUpperCase(key); };
        name.onValidate = [this, &name] {
            if (!name.text().trimmed().isEmpty())
                return true;
            prompter().stop(u"Name Should Not be Blank."_s);
            return false;
        };
        add<TextBox>(u"Txt_Other"_s);
        auto& save = add<Button>(u"Cmd_Save"_s);
        save.setCaption(u"&Save"_s);
        save.onClick = [this] { ++saves; };
        add<CheckBox>(u"ChkActive"_s);
        add<ComboBox>(u"Cmb_City"_s).setRows({{1, {u"AGRA"_s}}, {2, {u"PUNE"_s}}});
        auto& picture = add<ImageBox>(u"ImgGo"_s);
        picture.onClick = [this] { ++pictureClicks; };
        picture.onHover = [this](bool over) { hovered = over; };
        auto& grid = add<Grid>(u"GrdItems"_s);
        for (const QString& field : {u"Name"_s, u"Qty"_s, u"Done"_s}) {
            GridColumn column;
            column.number = static_cast<int>(grid.columns().size()) + 1;
            column.field = column.caption = field;
            column.checkBox = field == u"Done"_s;
            grid.addColumn(column);
        }
        grid.bind(db(), u"TmpItems"_s);
    }
    int saves = 0;
    int pictureClicks = 0;
    bool hovered = false;
};

void press(QWidget* widget, int key, const QString& text = {}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(widget, &event);
}

void typeInto(QWidget* widget, const QString& text) {
    for (QChar c : text)
        press(widget, c.toUpper().unicode(), QString(c));
}

void settle() {
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

class BinderTest : public ::testing::Test {
protected:
    void SetUp() override {
        ensureApplication();
        QString error;
        ASSERT_TRUE(db().open(world.dbPath, &error)) << error.toStdString();
        ASSERT_GE(db().execute(u"CREATE TEMP TABLE TmpItems (Name TEXT, Qty INTEGER, Done INTEGER)"_s), 0);
        ASSERT_EQ(db().execute(u"INSERT INTO TmpItems (Name, Qty) VALUES (?, ?), (?, ?)"_s,
                               {u"ASPIRIN"_s, 10, u"ZINC"_s, 20}),
                  2);
        screen = std::make_unique<Sample>(world.process);
        form.reset(Binder::create(*screen)->form());
        form->show();
        QApplication::setActiveWindow(form.get());
        settle();
    }

    Database& db() { return world.process.state.OpenDb; }
    template <class W> W* widget(const QString& name) const { return form->findChild<W*>(name); }
    TextBox& box(const QString& name) const { return *qobject_cast<TextBox*>(screen->control(name)); }

    test::TestWorld world;
    std::unique_ptr<Sample> screen;
    std::unique_ptr<QWidget> form;
};

TEST_F(BinderTest, KeysTypedIntoTheWidgetPassThroughTheScreensFilter) {
    auto* edit = widget<QLineEdit>(u"Txt_Name"_s);
    ASSERT_NE(edit, nullptr);
    typeInto(edit, u"ab'c"_s);
    EXPECT_EQ(box(u"Txt_Name"_s).text(), u"ABC"_s);
    EXPECT_EQ(edit->text(), u"ABC"_s);
    press(edit, Qt::Key_Backspace);
    EXPECT_EQ(box(u"Txt_Name"_s).text(), u"AB"_s);
    // A selection typed over is replaced, as the person sees it.
    edit->selectAll();
    typeInto(edit, u"z"_s);
    EXPECT_EQ(box(u"Txt_Name"_s).text(), u"Z"_s);
    EXPECT_EQ(edit->text(), u"Z"_s);
}

TEST_F(BinderTest, WhatTheLogicChangesShowsInTheWidgets) {
    box(u"Txt_Name"_s).setText(u"RAVI"_s);
    qobject_cast<CheckBox*>(screen->control(u"ChkActive"_s))->setValue(true);
    qobject_cast<ComboBox*>(screen->control(u"Cmb_City"_s))->setCurrent(1);
    screen->control(u"Cmd_Save"_s)->setEnabled(false);
    box(u"Txt_Other"_s).setLocked(true);
    screen->control(u"ImgGo"_s)->setVisible(false);
    EXPECT_EQ(widget<QLineEdit>(u"Txt_Name"_s)->text(), u"RAVI"_s);
    EXPECT_TRUE(widget<QCheckBox>(u"ChkActive"_s)->isChecked());
    EXPECT_EQ(widget<QComboBox>(u"Cmb_City"_s)->currentIndex(), 1);
    EXPECT_FALSE(widget<QPushButton>(u"Cmd_Save"_s)->isEnabled());
    EXPECT_EQ(widget<QPushButton>(u"Cmd_Save"_s)->text(), u"&Save"_s);
    EXPECT_TRUE(widget<QLineEdit>(u"Txt_Other"_s)->isReadOnly());
    EXPECT_TRUE(widget<QLabel>(u"ImgGo"_s)->isHidden());
}

TEST_F(BinderTest, ARefusedFocusChangePutsTheFocusBack) {
    screen->setFocus(u"Txt_Name"_s);
    settle();
    auto* name = widget<QLineEdit>(u"Txt_Name"_s);
    ASSERT_TRUE(name->hasFocus());
    widget<QLineEdit>(u"Txt_Other"_s)->setFocus(Qt::MouseFocusReason);
    settle();
    EXPECT_EQ(world.prompter.messages, QStringList{u"stop: Name Should Not be Blank."_s});
    EXPECT_EQ(screen->focus(), screen->control(u"Txt_Name"_s));
    EXPECT_TRUE(name->hasFocus());
    typeInto(name, u"x"_s);
    widget<QLineEdit>(u"Txt_Other"_s)->setFocus(Qt::MouseFocusReason);
    settle();
    EXPECT_EQ(screen->focus(), screen->control(u"Txt_Other"_s));
}

TEST_F(BinderTest, ClicksRunTheHandlersOnlyWhenTheRulesLetThem) {
    screen->setFocus(u"Txt_Name"_s);
    auto* save = widget<QPushButton>(u"Cmd_Save"_s);
    save->click();
    EXPECT_EQ(screen->saves, 0);
    EXPECT_EQ(world.prompter.messages.size(), 1);
    typeInto(widget<QLineEdit>(u"Txt_Name"_s), u"ravi"_s);
    save->click();
    EXPECT_EQ(screen->saves, 1);
    EXPECT_EQ(screen->focus(), screen->control(u"Cmd_Save"_s));
    // The tick box follows the logic's value, which the click toggles once.
    widget<QCheckBox>(u"ChkActive"_s)->click();
    EXPECT_TRUE(qobject_cast<CheckBox*>(screen->control(u"ChkActive"_s))->value());
    EXPECT_TRUE(widget<QCheckBox>(u"ChkActive"_s)->isChecked());
    // The person's pick in the combo is the screen's choose.
    Q_EMIT widget<QComboBox>(u"Cmb_City"_s)->activated(0);
    EXPECT_EQ(qobject_cast<ComboBox*>(screen->control(u"Cmb_City"_s))->currentCode().toInt(), 1);
}

TEST_F(BinderTest, APictureIsClickableAndReportsTheMouseOverIt) {
    auto* picture = widget<QLabel>(u"ImgGo"_s);
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(picture, &enter);
    EXPECT_TRUE(screen->hovered);
    const QPointF inside(2, 2);
    QMouseEvent down(QEvent::MouseButtonPress, inside, inside, Qt::LeftButton, Qt::LeftButton,
                     Qt::NoModifier);
    QMouseEvent up(QEvent::MouseButtonRelease, inside, inside, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(picture, &down);
    QApplication::sendEvent(picture, &up);
    EXPECT_EQ(screen->pictureClicks, 1);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(picture, &leave);
    EXPECT_FALSE(screen->hovered);
}

TEST_F(BinderTest, TheGridViewShowsTheStagingRowsAndItsEditsReachTheTable) {
    auto* view = widget<QTableView>(u"GrdItems"_s);
    ASSERT_NE(view, nullptr);
    QAbstractItemModel* model = view->model();
    ASSERT_EQ(model->rowCount(), 3); // two rows and the new line
    EXPECT_EQ(model->index(0, 0).data().toString(), u"ASPIRIN"_s);
    EXPECT_EQ(model->index(1, 1).data().toString(), u"20"_s);
    EXPECT_EQ(model->headerData(1, Qt::Horizontal).toString(), u"Qty"_s);

    auto& grid = *qobject_cast<Grid*>(screen->control(u"GrdItems"_s));
    EXPECT_TRUE(model->setData(model->index(1, 1), u"25"_s));
    EXPECT_EQ(grid.currentRow(), 1);
    // Moving to another row in the view commits the edited one to the table.
    view->setCurrentIndex(model->index(0, 0));
    settle();
    EXPECT_EQ(grid.currentRow(), 0);
    EXPECT_EQ(db().scalar(u"SELECT Qty FROM TmpItems WHERE Name = ?"_s, {u"ZINC"_s}).toInt(), 25);

    // A tick in a tick-box column is the grid's tick.
    EXPECT_TRUE(model->setData(model->index(0, 2), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(grid.value(u"Done"_s).toInt(), 1);
    EXPECT_EQ(model->index(0, 2).data(Qt::CheckStateRole).toInt(), Qt::Checked);

    // A row typed on the new line becomes a row of the table, and the view grows by one.
    EXPECT_TRUE(model->setData(model->index(2, 0), u"IRON"_s));
    view->setCurrentIndex(model->index(1, 0));
    settle();
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM TmpItems"_s).toInt(), 3);
    EXPECT_EQ(db().scalar(u"SELECT Done FROM TmpItems WHERE Name = ?"_s, {u"ASPIRIN"_s}).toInt(), 1);
    EXPECT_EQ(model->rowCount(), 4);
    EXPECT_EQ(model->index(2, 0).data().toString(), u"IRON"_s);
}

TEST(BinderForms, TheLoginFormBindsItsDesignedWidgetsAndPictures) {
    ensureApplication();
    test::TestWorld world;
    std::unique_ptr<Screen> login = ScreenRegistry::instance().create(u"FrmAuthentication"_s, world.process);
    ASSERT_NE(login, nullptr);
    std::unique_ptr<QWidget> form(Binder::create(*login)->form());
    EXPECT_EQ(form->objectName(), u"FrmAuthentication"_s);
    auto* password = form->findChild<QLineEdit*>(u"TxtPassword"_s);
    ASSERT_NE(password, nullptr);
    EXPECT_EQ(password->echoMode(), QLineEdit::Password);
    auto* image = form->findChild<QLabel*>(u"ImgContinue"_s);
    ASSERT_NE(image, nullptr);
    EXPECT_FALSE(image->pixmap().isNull());
    EXPECT_EQ(form->findChild<QLabel*>(u"ImgContinue_Caption"_s)->text(), u"Continue..."_s);
    const qint64 normal = image->pixmap().cacheKey();
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(image, &enter);
    EXPECT_NE(image->pixmap().cacheKey(), normal);
    EXPECT_FALSE(image->pixmap().isNull());
}

} // namespace
} // namespace vantrel
