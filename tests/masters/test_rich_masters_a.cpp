#include "core/Startup.h"
#include "gui/Binder.h"
#include "tests/support/Fakes.h"

#include <QApplication>
#include <QWidget>
#include <optional>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

// The designed forms of the allergy, physical examination, sponsor and employer masters, bound to their
// screens as the program shows them.
class RichMasterFormTest : public ::testing::Test {
protected:
    void SetUp() override {
        // The widget tests share one application object when they run together; alone, this one makes its
        // own.
        if (!QApplication::instance()) {
            static int argc = 1;
            static char name[] = "vantrel_tests";
            static char* argv[] = {name, nullptr};
            application.emplace(argc, argv);
        }
        world.sql(u"INSERT INTO AllergyTypes (Code, Name) VALUES (1, 'FOOD')"_s);
        SetPaths(world.process.state, world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
        ASSERT_TRUE(LoadControlParameters(world.process));
    }

    // Opens the screen, with the launcher's letter when given, and binds its form.
    Screen& show(const QString& name, const QString& letter = {}) {
        Screen* screen = world.process.open(name, [&letter](Screen& s) {
            if (!letter.isEmpty())
                s.inputs[u"Mode"_s] = letter;
        });
        EXPECT_NE(screen, nullptr);
        binder = Binder::create(*screen);
        form.reset(binder->form());
        form->show();
        QCoreApplication::processEvents();
        return *screen;
    }

    bool shows(const QString& widget) const {
        const auto* w = form->findChild<QWidget*>(widget);
        EXPECT_NE(w, nullptr) << widget.toStdString();
        return w && w->isVisibleTo(form.get());
    }

    std::optional<QApplication> application;
    test::TestWorld world;
    Binder* binder = nullptr;
    std::unique_ptr<QWidget> form;
};

// A control the form has no widget for can not be seen or used in the program, though the scenarios reach
// it through the logic.
TEST_F(RichMasterFormTest, EveryControlOfTheScreensHasItsWidgetInTheForm) {
    for (const QString& name : {u"Mst_Allergy"_s, u"Mst_Physical"_s, u"Mst_Sponsor"_s, u"Mst_Employer"_s}) {
        Screen& screen = show(name, name == u"Mst_Allergy"_s ? u"P"_s : QString());
        for (Control* control : screen.controls())
            EXPECT_NE(binder->widgetFor(control), nullptr)
                << name.toStdString() << " " << control->name().toStdString() << "(" << control->index()
                << ")";
        form.reset();
        world.process.closeScreen(screen);
    }
}

// Each letter shows the fields of its own table only, their captions with them, under its own frame
// caption; the eleven buttons of the array carry the captions of the master buttons.
TEST_F(RichMasterFormTest, TheAllergyFormShowsTheFieldsOfItsLetterOnly) {
    struct Expected {
        QString letter;
        QString frame;
        bool type;
        bool quantity;
    };
    const Expected cases[] = {
        {u"O"_s, u"Occupation"_s, false, false},     {u"R"_s, u"Relationship"_s, false, false},
        {u"P"_s, u"Personal Detail"_s, false, true}, {u"T"_s, u"Allergy Type"_s, false, false},
        {u"A"_s, u"Allergy"_s, true, false},         {u"S"_s, u"Sub-Allergy"_s, false, false}};
    for (const Expected& e : cases) {
        SCOPED_TRACE(e.letter.toStdString());
        Screen& screen = show(u"Mst_Allergy"_s, e.letter);
        EXPECT_EQ(screen.control(u"Fra_Name"_s)->caption(), e.frame);
        EXPECT_EQ(shows(u"CmbType"_s), e.type);
        EXPECT_EQ(shows(u"LblCmbType"_s), e.type);
        EXPECT_EQ(shows(u"Chk_Qty"_s), e.quantity);
        EXPECT_EQ(shows(u"TxtUnit"_s), e.quantity);
        EXPECT_EQ(shows(u"LblTxtUnit"_s), e.quantity);
        EXPECT_TRUE(shows(u"Txt_Name"_s));
        for (int i = 0; i < 11; ++i)
            EXPECT_TRUE(shows(u"Cmd_"_s + QString::number(i)));
        form.reset();
        world.process.closeScreen(screen);
    }
}

} // namespace
} // namespace vantrel
