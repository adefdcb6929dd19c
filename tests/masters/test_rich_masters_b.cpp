#include "core/Startup.h"
#include "masters/MasterScreen.h"
#include "tests/support/Fakes.h"

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

// Stands in for the prescribers' own locator where the program does not have it yet.
class StandInFindDoctor : public Screen {
public:
    explicit StandInFindDoctor(Process& process) : Screen(process, u"Find_Doctor"_s) {}
};

class PrescriberLocatorTest : public ::testing::Test {
protected:
    void SetUp() override {
        world.sql(u"INSERT INTO City (Code, Name) VALUES (1, 'LUCKNOW')"_s);
        world.sql(u"INSERT INTO Department (Code, Name) VALUES (1, 'MEDICINE')"_s);
        world.sql(u"INSERT INTO Prescriber (Code, Name) VALUES (7, 'DR. KAPOOR'), (8, 'DR. VERMA'), "
                  "(9, 'DR. ZAIDI')"_s);
        SetPaths(world.process.state, world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
        ASSERT_TRUE(LoadControlParameters(world.process));
        if (!ScreenRegistry::instance().has(u"Find_Doctor"_s)) {
            ScreenRegistry::instance().add(u"Find_Doctor"_s, [](Process& process) {
                return std::unique_ptr<Screen>(new StandInFindDoctor(process));
            });
        }
    }

    MasterScreen& open() {
        Screen* screen = world.process.open(u"Mst_Doctor"_s);
        EXPECT_NE(screen, nullptr);
        screen->activated();
        return static_cast<MasterScreen&>(*screen);
    }

    test::TestWorld world;
};

// Locate hands the current prescriber to the prescribers' locator as a locator, not as a query, and shows
// the one it answers; an answer of 0 leaves the row where it was.
TEST_F(PrescriberLocatorTest, LocateGoesThroughThePrescribersOwnLocator) {
    MasterScreen& screen = open();
    ASSERT_EQ(screen.nameBox().text().toStdString(), "DR. ZAIDI");
    ProcessState& state = world.process.state;
    state.QueryMode = true;

    qint64 handed = -1;
    bool queryMode = true;
    world.host.modal[u"Find_Doctor"_s].push_back([&](Screen& find) {
        handed = find.state().SelectedCode;
        queryMode = find.state().QueryMode;
        find.state().SelectedCode = 7;
    });
    screen.click(*screen.control(u"CmdLocate"_s));
    EXPECT_EQ(handed, 9);
    EXPECT_FALSE(queryMode);
    EXPECT_EQ(screen.nameBox().text().toStdString(), "DR. KAPOOR");
    EXPECT_TRUE(world.host.shown.contains(u"Find_Doctor"_s));
    EXPECT_FALSE(world.host.shown.contains(u"Find"_s));

    world.host.modal[u"Find_Doctor"_s].push_back([](Screen& find) { find.state().SelectedCode = 0; });
    screen.click(*screen.control(u"CmdLocate"_s));
    EXPECT_EQ(screen.nameBox().text().toStdString(), "DR. KAPOOR");
    EXPECT_TRUE(world.prompter.messages.isEmpty()) << world.prompter.messages.join(u'\n').toStdString();
}

} // namespace
} // namespace vantrel
