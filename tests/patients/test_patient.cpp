#include "core/Startup.h"
#include "tests/support/Fakes.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

class PatientMasterTest : public ::testing::Test {
protected:
    void SetUp() override {
        w.sql(u"INSERT INTO City (Code, Name) VALUES (1, 'PUNE')"_s);
        w.sql(u"INSERT INTO AgeGroup (Code, Name) VALUES (1, 'CHILDHOOD')"_s);
        w.sql(u"INSERT INTO Allergies (Code, Name) VALUES (1, 'DUST')"_s);
        w.sql(u"INSERT INTO Patient (Code, Name, FirstName, Sex, BirthDate) VALUES (1, 'ASHA', 'ASHA', 'F', "
              "'1990-01-01')"_s);
        w.sql(
            u"INSERT INTO PatientAllergy (PatientCode, AllergyCode, AllergyType, AgeCode) VALUES (1, 1, 'A', 1)"_s);
        SetPaths(w.process.state, w.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(w.process, &error)) << error.toStdString();
        ASSERT_TRUE(LoadControlParameters(w.process));
    }
    Database& db() { return w.process.state.OpenDb; }
    test::TestWorld w;
};

TEST_F(PatientMasterTest, AFailedSaveKeepsThePatientAndItsHistoryAsTheyWere) {
    Screen* s = w.process.open(u"Mst_Patient"_s);
    ASSERT_TRUE(s);
    s->click(*s->control(u"Cmd"_s, 5));
    s->paste(*s->control(u"TxtFather"_s), u"RAJ"_s);
    ASSERT_GE(db().execute(u"CREATE TRIGGER Refuse BEFORE INSERT ON PatientAllergy "
                           "BEGIN SELECT RAISE(ABORT, 'full'); END"_s),
              0);
    w.prompter.messages.clear();
    s->click(*s->control(u"Cmd"_s, 8));
    ASSERT_EQ(w.prompter.messages.size(), 1);
    EXPECT_TRUE(QRegularExpression(u"^stop: Error While Saving Patient Details .*full"_s)
                    .match(w.prompter.messages.front())
                    .hasMatch())
        << w.prompter.messages.front().toStdString();
    EXPECT_EQ(db().scalar(u"SELECT IFNULL(father, '') FROM Patient WHERE Code = 1"_s).toString(), QString());
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM PatientAllergy"_s).toInt(), 1);
    EXPECT_EQ(s->mask(u"Cmd"_s), u"000000001100"_s);

    ASSERT_GE(db().execute(u"DROP TRIGGER Refuse"_s), 0);
    w.prompter.messages.clear();
    s->click(*s->control(u"Cmd"_s, 8));
    EXPECT_EQ(w.prompter.messages, QStringList{u"info: Patient Updated."_s});
    EXPECT_EQ(db().scalar(u"SELECT father FROM Patient WHERE Code = 1"_s).toString(), u"RAJ"_s);
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM PatientAllergy"_s).toInt(), 1);
}

TEST_F(PatientMasterTest, ACallerWithAMissingPatientIsToldAndTheScreenCloses) {
    w.process.state.CurrentPatientCode = 99;
    w.process.openModal(u"Mst_Patient"_s, [](Screen& s) {
        s.inputs.insert(u"CallerId"_s, 1);
        s.inputs.insert(u"EditExisting"_s, true);
    });
    EXPECT_EQ(w.prompter.messages, QStringList{u"stop: Patient Record Missing. Critical Program Error."_s});
}

} // namespace
} // namespace vantrel
