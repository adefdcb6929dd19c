#include "core/Startup.h"
#include "tests/support/Fakes.h"

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

// Brands: 1 WARF (warfarin), 2 ECOSPRIN (aspirin), 3 BRUFEN (ibuprofen), 4 CROCIN (paracetamol).
class IntDetailsTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetPaths(w.process.state, w.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(w.process, &error)) << error.toStdString();
        for (
            const QString& sql : {
                u"INSERT INTO PharmaName (Code, Name) VALUES (1, 'WARFARIN'), (2, 'ASPIRIN'), (3, "
                u"'IBUPROFEN'), "
                "(4, 'PARACETAMOL')"_s,
                u"INSERT INTO GenericName (Code, Name) VALUES (1, 'WARF'), (2, 'ECOSPRIN'), (3, 'BRUFEN'), "
                "(4, 'CROCIN')"_s,
                u"INSERT INTO GenericPharma (GenericCode, PharmaCode) VALUES (1, 1), (2, 2), (3, 3), (4, 4)"_s,
                u"INSERT INTO InteractionType (Code, Name) VALUES (1, 'RISK OF BLEEDING')"_s,
                u"INSERT INTO Interaction (PharmaCode, PharmaCodeInt, IntTypeCode) VALUES (1, 2, 1), (2, 1, "
                u"1), "
                "(1, 3, 1), (3, 1, 1)"_s,
            })
            ASSERT_GE(db().execute(sql), 0) << db().lastError().toStdString();
    }
    Database& db() { return w.process.state.OpenDb; }
    void stage(const QString& table, const QList<int>& brands) {
        for (int brand : brands)
            db().execute(u"INSERT INTO %1 (Code, Name, DsgFmCode) SELECT Code, Name, 1 FROM GenericName "
                         "WHERE Code = ?"_s.arg(table),
                         {brand});
    }
    // Opens the dialog, runs the steps while it shows and gives back its answer and its rows.
    struct Outcome {
        bool shown = false;
        QVariant refused;
        QStringList rows;
        QString caption;
    };
    Outcome show(int source, bool showAll, qint64 brand, const std::function<void(Screen&)>& steps = {}) {
        Outcome outcome;
        w.host.modal[u"FrmIntDetails"_s].push_back([&](Screen& s) {
            outcome.shown = true;
            auto& grid = *qobject_cast<Grid*>(s.control(u"GrdInteraction"_s));
            outcome.caption = s.control(u"FraInteraction"_s)->caption();
            for (int row = 0; row < grid.rowCount(); ++row)
                outcome.rows << grid.cellText(row, 1) + u"/"_s + grid.cellText(row, 3) + u" x "_s +
                                    grid.cellText(row, 4) + u"/"_s + grid.cellText(row, 7) + u": "_s +
                                    grid.cellText(row, 8);
            if (steps)
                steps(s);
        });
        w.process.openModal(
            u"FrmIntDetails"_s,
            [&](Screen& s) {
                s.inputs.insert(u"Source"_s, source);
                s.inputs.insert(u"ShowAll"_s, showAll);
                s.inputs.insert(u"GetBrandCode"_s, brand);
            },
            [&](Screen& s) { outcome.refused = s.outputs.value(u"ChkInteraction"_s); });
        w.host.modal.erase(u"FrmIntDetails"_s);
        return outcome;
    }
    test::TestWorld w;
};

TEST_F(IntDetailsTest, OneBrandIsShownAgainstTheLinesAndTheDoctorDecides) {
    stage(u"TmpDet"_s, {1, 4});
    const auto accepted = show(0, false, 3, [](Screen& s) { s.click(*s.control(u"Cmd_Ok"_s)); });
    EXPECT_TRUE(accepted.shown);
    EXPECT_EQ(accepted.caption, u"Interaction Details of BRUFEN"_s);
    EXPECT_EQ(accepted.rows, QStringList{u"BRUFEN/IBUPROFEN x WARF/WARFARIN: RISK OF BLEEDING"_s});
    EXPECT_EQ(accepted.refused, QVariant(false));

    const auto cancelled = show(0, false, 3, [](Screen& s) { s.click(*s.control(u"Cmd_Cancel"_s)); });
    EXPECT_EQ(cancelled.refused, QVariant(true));
    // The window's close box is no acceptance.
    EXPECT_EQ(show(0, false, 3).refused, QVariant(true));
}

TEST_F(IntDetailsTest, WithoutAPairTheBrandIsAcceptedInSilence) {
    stage(u"TmpDet"_s, {4});
    w.prompter.messages.clear();
    const auto outcome = show(0, false, 3);
    EXPECT_EQ(outcome.refused, QVariant(false));
    EXPECT_FALSE(outcome.shown);
    EXPECT_TRUE(w.prompter.messages.isEmpty());
}

TEST_F(IntDetailsTest, AllLinesShowEachPairFromBothSidesAndNothingToAccept) {
    stage(u"TmpDet"_s, {1, 2, 4});
    bool acceptShown = true;
    const auto outcome =
        show(0, true, 0, [&](Screen& s) { acceptShown = s.control(u"Cmd_Ok"_s)->visible(); });
    EXPECT_FALSE(acceptShown);
    EXPECT_EQ(outcome.caption, u"Interaction Details of All Prescribed Brands"_s);
    EXPECT_EQ(outcome.rows, (QStringList{u"ECOSPRIN/ASPIRIN x WARF/WARFARIN: RISK OF BLEEDING"_s,
                                         u"WARF/WARFARIN x ECOSPRIN/ASPIRIN: RISK OF BLEEDING"_s}));

    db().execute(u"DELETE FROM TmpDet"_s);
    stage(u"TmpDet"_s, {3, 4});
    w.prompter.messages.clear();
    EXPECT_FALSE(show(0, true, 0).shown);
    EXPECT_EQ(w.prompter.messages, QStringList{u"info: No Interaction Found."_s});
}

TEST_F(IntDetailsTest, TheReadyMadeLinesAreTheSourceWhenAskedFor) {
    stage(u"TmpDet"_s, {3});
    stage(u"TmpReadyDet"_s, {2});
    const auto outcome = show(1, false, 1);
    EXPECT_EQ(outcome.rows, QStringList{u"WARF/WARFARIN x ECOSPRIN/ASPIRIN: RISK OF BLEEDING"_s});
}

TEST_F(IntDetailsTest, CellsChooseABrandOrADrugAndTheEntryValuesComeBack) {
    stage(u"TmpDet"_s, {1});
    w.process.state.CurrentBrandCode = 77;
    w.process.state.CurrentPharmaCode = 88;
    qint64 brand = 0, drug = 0;
    bool brandInfo = false, drugInfo = true;
    show(0, false, 3, [&](Screen& s) {
        auto& grid = *qobject_cast<Grid*>(s.control(u"GrdInteraction"_s));
        grid.clickCell(0, 4);
        brand = s.state().CurrentBrandCode;
        brandInfo = s.control(u"Cmd_BrandInfo"_s)->enabled();
        drugInfo = s.control(u"Cmd_DrugInfo"_s)->enabled();
        grid.clickCell(0, 3);
        drug = s.state().CurrentPharmaCode;
        EXPECT_TRUE(s.control(u"Cmd_DrugInfo"_s)->enabled());
        EXPECT_FALSE(s.control(u"Cmd_BrandInfo"_s)->enabled());
        grid.clickCell(0, 8);
        EXPECT_FALSE(s.control(u"Cmd_DrugInfo"_s)->enabled());
    });
    EXPECT_EQ(brand, 1);
    EXPECT_TRUE(brandInfo);
    EXPECT_FALSE(drugInfo);
    EXPECT_EQ(drug, 3);
    EXPECT_EQ(w.process.state.CurrentBrandCode, 77);
    EXPECT_EQ(w.process.state.CurrentPharmaCode, 88);
}

} // namespace
} // namespace vantrel
