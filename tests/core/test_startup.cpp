#include "core/Lookup.h"
#include "core/Startup.h"
#include "tests/support/Fakes.h"

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

class StartupTest : public ::testing::Test {
protected:
    ProcessState& state() { return world.process.state; }
    void openDatabase() {
        SetPaths(state(), world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
    }
    void login(const QString& password) {
        world.host.modal[u"FrmAuthentication"_s].push_back([password](Screen& s) {
            s.paste(*s.control(u"TxtPassword"_s), password);
            s.pressKey(*s.control(u"TxtPassword"_s), Key::Enter);
        });
    }
    test::TestWorld world;
};

TEST_F(StartupTest, ParametersReadNullTextEmptyNumbersAsZeroAndPasswordsInClearOrder) {
    world.sql(u"UPDATE Control SET ClinicName = NULL, MasterFore = '', Password = ' 321cba ', City1 = 2"_s);
    world.sql(u"INSERT INTO City (Code, Name) VALUES (2, 'PUNE')"_s);
    openDatabase();
    ASSERT_TRUE(LoadControlParameters(world.process));
    const ClinicParameters& p = state().Params;
    EXPECT_EQ(p.text(u"ClinicName"_s), QString());
    EXPECT_EQ(p.integer(u"MasterFore"_s), 0);
    EXPECT_EQ(p.text(u"Password"_s), u"abc123"_s);
    EXPECT_EQ(p.text(u"HOpt"_s), u"admin"_s);
    EXPECT_EQ(p.text(u"City1"_s), u"PUNE"_s);
    EXPECT_EQ(p.text(u"City2"_s), QString()) << "a code with no city reads as an empty name";
    EXPECT_EQ(state().CurrentYear, 2026);
    EXPECT_EQ(state().CurrentMonth, 1);
}

TEST_F(StartupTest, TheFrontDeskReadsItsOwnColumnsUnderThePlainNames) {
    world.sql(u"UPDATE Control SET SoundEffect = 1, OPDSoundEffect = 0, MasterBack = '111', "
              "OPDMasterBack = '222', PadSnapFore = '5', OPDSnapFore = '6', ChkSafety = 1"_s);
    world.sql(u"INSERT INTO Prescriber (Name) VALUES ('DR. ASHA RAO')"_s);
    openDatabase();
    state().RunMode = 2;
    ASSERT_TRUE(LoadControlParameters(world.process));
    const ClinicParameters& p = state().Params;
    EXPECT_FALSE(p.flag(u"SoundEffect"_s));
    EXPECT_EQ(p.integer(u"MasterBack"_s), 222);
    EXPECT_EQ(p.integer(u"PadSnapFore"_s), 6);
    EXPECT_TRUE(p.flag(u"ChkSafety"_s)) << "a column without an OPD twin reads the same in both";
}

TEST_F(StartupTest, ThePhysicalListHoldsOnlyVisibleExaminationsWhenAskedAndIsSortedByName) {
    world.sql(u"INSERT INTO Physical (Code, Name, EVisible) VALUES (1, 'PULSE', 1), (2, 'ABDOMEN', 0), "
              "(3, 'CHEST', 1)"_s);
    openDatabase();
    ASSERT_TRUE(LoadControlParameters(world.process));
    ASSERT_EQ(state().PhysicalList.size(), 3u);
    EXPECT_EQ(state().PhysicalList.front().Name, u"ABDOMEN"_s);
    state().OpenDb.execute(u"UPDATE Control SET ShowPhysical = 1"_s);
    ASSERT_TRUE(LoadControlParameters(world.process));
    ASSERT_EQ(state().PhysicalList.size(), 2u);
    EXPECT_EQ(state().PhysicalList.front().Name, u"CHEST"_s);
    state().OpenDb.execute(u"DELETE FROM Physical"_s);
    EXPECT_TRUE(LoadControlParameters(world.process));
    EXPECT_TRUE(state().PhysicalList.empty());
}

TEST_F(StartupTest, TheClinicUsersPrescriberRowIsMadeFromTheParametersOnceAndFoundByNameAfter) {
    world.sql(
        u"UPDATE Control SET Registration = 'MMC 1234', Address1 = 'FC ROAD', City1 = 4, "
        "phones1 = '020 2553 1100', Specialise = 'PHYSICIAN', Timing1 = '10 AM - 1 PM', Department = 3"_s);
    openDatabase();
    ASSERT_TRUE(LoadControlParameters(world.process));
    const qint64 first = state().ClinicPrescriberCode;
    EXPECT_GE(first, 1);
    const auto row = state().OpenDb.first(u"SELECT * FROM Prescriber"_s);
    ASSERT_TRUE(row);
    EXPECT_EQ(row->text(u"ReGnNo"_s), u"MMC 1234"_s);
    EXPECT_EQ(row->text(u"City"_s), u"4"_s) << "the prescriber keeps the city's code, not its name";
    EXPECT_EQ(row->text(u"Specilise"_s), u"PHYSICIAN"_s);
    EXPECT_EQ(row->integer(u"Department"_s), 3);
    EXPECT_EQ(row->real(u"VisitAmt"_s), 250.0);
    ASSERT_TRUE(LoadControlParameters(world.process));
    EXPECT_EQ(state().ClinicPrescriberCode, first);
    EXPECT_EQ(state().OpenDb.scalar(u"SELECT COUNT(*) FROM Prescriber"_s).toInt(), 1);
    state().OpenDb.execute(u"UPDATE Control SET Clinic_User = 'DR. RAVI RAO'"_s);
    ASSERT_TRUE(LoadControlParameters(world.process));
    EXPECT_NE(state().ClinicPrescriberCode, first);
    EXPECT_EQ(state().OpenDb.scalar(u"SELECT COUNT(*) FROM Prescriber"_s).toInt(), 2);
}

TEST_F(StartupTest, TheFrontDeskRefusesToStartWithoutTheClinicUsersRow) {
    Main(world.process, 2, world.folder);
    EXPECT_EQ(
        world.prompter.messages,
        QStringList{
            u"stop: Clinic User's Information Missing. Please Run the Main (Server) Application First."_s});
    EXPECT_EQ(state().ClinicPrescriberCode, 0);
    EXPECT_FALSE(state().OpenDb.isOpen());
    EXPECT_FALSE(world.host.shown.contains(u"FrmAuthentication"_s));
    EXPECT_TRUE(world.host.quitCalled);
}

TEST_F(StartupTest, ALoginOpensTheMainWindowAfterTheSplashHeldFourSeconds) {
    login(u"secret"_s);
    Main(world.process, 1, world.folder);
    EXPECT_EQ(world.host.shown, (QStringList{u"Splash"_s, u"FrmAuthentication"_s, u"Slide"_s, u"MainForm"_s}))
        << "the launcher is opened by the main window as it loads";
    EXPECT_EQ(world.host.waited, 4);
    EXPECT_FALSE(world.process.isOpen(u"Splash"_s));
    EXPECT_EQ(world.host.title, u"Vantrel 3.0 - Dr. Asha Rao"_s);
    EXPECT_FALSE(state().AdminLogin);
    EXPECT_TRUE(QDir(world.folder + u"Img000.001"_s).exists());
    EXPECT_TRUE(QDir(world.folder + u"SnapShots"_s).exists());
}

TEST_F(StartupTest, TheAdministrativePasswordMarksTheLogin) {
    login(u"  admin "_s);
    Main(world.process, 1, world.folder);
    EXPECT_TRUE(state().AdminLogin);
    EXPECT_TRUE(world.process.isOpen(u"MainForm"_s));
}

TEST_F(StartupTest, QuittingAtTheLoginClosesTheDatabaseAndShowsNoMainWindow) {
    world.host.modal[u"FrmAuthentication"_s].push_back([](Screen& s) { s.click(*s.control(u"ImgQuit"_s)); });
    Main(world.process, 1, world.folder);
    EXPECT_TRUE(state().LoginCancelled);
    EXPECT_FALSE(state().OpenDb.isOpen());
    EXPECT_FALSE(world.host.shown.contains(u"MainForm"_s));
    EXPECT_TRUE(world.process.openScreens().empty());
}

TEST_F(StartupTest, TheMainWindowRefusesEveryCloseButTheProgramsOwn) {
    login(u"secret"_s);
    Main(world.process, 1, world.folder);
    Screen* mainForm = world.process.find(u"MainForm"_s);
    ASSERT_TRUE(mainForm);
    EXPECT_FALSE(world.process.requestClose(*mainForm));
    EXPECT_TRUE(world.process.isOpen(u"MainForm"_s));
    ExitApplication(world.process);
    EXPECT_FALSE(world.process.isOpen(u"MainForm"_s));
    EXPECT_FALSE(state().OpenDb.isOpen());
}

TEST_F(StartupTest, ObservationsOfOneOwnerFillTheListAndUnknownExaminationsAreSkipped) {
    world.sql(u"INSERT INTO Physical (Code, Name) VALUES (1, 'PULSE'), (2, 'CHEST')"_s);
    world.sql(
        u"INSERT INTO PatientPhysical (PatientCode, PhysicalCode, Observation) VALUES (5, 1, '72/MIN'), "
        "(5, 9, 'GONE'), (6, 2, 'CLEAR')"_s);
    world.sql(
        u"INSERT INTO PresPhysical (PrescriptionCode, PhysicalCode, Observation) VALUES (5, 2, 'WHEEZE')"_s);
    world.sql(
        u"INSERT INTO VisitPhysical (VisitNo, PhysicalCode, Observation) VALUES ('20260100001', 1, '90')"_s);
    openDatabase();
    ASSERT_TRUE(LoadControlParameters(world.process));
    const auto observations = [this] {
        QStringList list;
        for (const PhysicalEntry& e : state().PhysicalList)
            list.append(e.Name + u'=' + e.Observation);
        return list;
    };
    LoadPhysicalObservations(state(), u"P"_s, 5);
    EXPECT_EQ(observations(), (QStringList{u"CHEST="_s, u"PULSE=72/MIN"_s}));
    LoadPhysicalObservations(state(), u"D"_s, 5);
    EXPECT_EQ(observations(), (QStringList{u"CHEST=WHEEZE"_s, u"PULSE="_s}));
    LoadPhysicalObservations(state(), u"V"_s, 0, u"20260100001"_s);
    EXPECT_EQ(observations(), (QStringList{u"CHEST="_s, u"PULSE=90"_s}));
    ClearPhysicalObservations(state());
    EXPECT_EQ(observations(), (QStringList{u"CHEST="_s, u"PULSE="_s}));
}

TEST(ProperCase, RaisesTheFirstLetterOfEveryWordAndLowersTheRest) {
    EXPECT_EQ(ProperCase(u"DR. ANIL MEHTA"_s), u"Dr. Anil Mehta"_s);
    EXPECT_EQ(ProperCase(u"dr  o'BRIEN-SMITH"_s), u"Dr  O'brien-smith"_s);
    EXPECT_EQ(ProperCase(QString()), QString());
}

} // namespace
} // namespace vantrel
