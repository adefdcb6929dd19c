// vantrel-bench: builds a large synthetic clinic database and times interactive operations through the
// screen logic, printing the median and the 95th percentile of each in milliseconds.
//
//   vantrel-bench FOLDER [--runs N]
//
// FOLDER becomes a program folder with Data/Vantrel.db; an existing database there is used as it is, so
// the build (a minute or so) is paid once.

#include "core/Host.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "core/Startup.h"
#include "masters/Checks.h"
#include "prescription/BrandCheck.h"
#include "prescription/FrmPrescription.h"
#include "store/Schema.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;
using namespace vantrel;

namespace {

// The size of the clinic.
constexpr int kDrugs = 5000;
constexpr int kBrands = 50000;
constexpr int kInteractionPairs = 20000;
constexpr int kPatients = 100000;
constexpr int kPrescriptions = 300000;
constexpr int kLinesPerPrescription = 6;
constexpr int kManufacturers = 600;
constexpr int kForms = 40;
constexpr int kDiseases = 2000;
constexpr int kIndications = 300;
constexpr int kGroups = 60;

class QuietHost : public Host {
public:
    bool anotherInstanceRunning() override { return false; }
    QSize screenSize() override { return {1366, 768}; }
    void show(Screen&) override {}
    void runModal(Screen& screen) override {
        screen.activated();
        if (!screen.isClosed())
            screen.process().closeScreen(screen);
    }
    void remove(Screen&) override {}
    void setMainTitle(const QString& text) override { m_title = text; }
    QString mainTitle() const override { return m_title; }
    void resetLauncher() override {}
    void hourglass(bool) override {}
    void processEvents() override {}
    void waitUntil(const QDateTime&, int) override {}
    void playSound(const QString&, const QString&) override {}
    void showHelp(const QString&, int) override {}
    void quit() override {}

private:
    QString m_title;
};

class QuietPrompter : public Prompter {
public:
    void info(const QString&) override {}
    void stop(const QString&) override {}
    bool ask(const QString&) override { return false; }
    void beep() override {}
};

bool Run(QSqlQuery& q, const QVariantList& values) {
    for (int i = 0; i < values.size(); ++i)
        q.bindValue(i, values[i]);
    if (q.exec())
        return true;
    std::fprintf(stderr, "%s\n", qPrintable(q.lastError().text()));
    return false;
}

// Fills `count` rows through one prepared statement.
bool Fill(QSqlDatabase& db, const QString& sql, int count, const std::function<QVariantList(int)>& row) {
    QSqlQuery q(db);
    if (!q.prepare(sql)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(sql), qPrintable(q.lastError().text()));
        return false;
    }
    for (int i = 1; i <= count; ++i) {
        if (!Run(q, row(i)))
            return false;
    }
    return true;
}

bool Build(const QString& path) {
    QElapsedTimer timer;
    timer.start();
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"bench-build"_s);
        db.setDatabaseName(path);
        if (!db.open())
            return false;
        QString error;
        if (!schema::migrate(db, &error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return false;
        }
        QSqlQuery(db).exec(u"PRAGMA journal_mode = OFF"_s);
        QSqlQuery(db).exec(u"PRAGMA synchronous = OFF"_s);
        db.transaction();
        QRandomGenerator random(20261123);
        auto pick = [&random](int n) { return random.bounded(n) + 1; };
        // Interactions are stored in both directions.
        std::vector<std::pair<int, int>> pairs;
        for (int i = 0; i < kInteractionPairs; ++i)
            pairs.emplace_back(pick(kDrugs), pick(kDrugs));
        ok =
            Fill(db,
                 u"INSERT INTO Control (Clinic_User, UserProfileUpdated, AgePaediatric, AgeElderly, "
                 u"CheckUpDays, "
                 "DefaultFee, ChkSubstitute, ChkInteraction, ChkDrug, ChkSafety, AllowDelPad, AllowUpdPad) "
                 "VALUES (?, 1, 12, 65, 7, 200, 1, 1, 1, 1, 1, 1)"_s,
                 1, [](int) { return QVariantList{u"DR. BENCH MARK"_s}; }) &&
            Fill(db, u"INSERT INTO City (Code, Name) VALUES (?, ?)"_s, 300,
                 [](int i) {
                     return QVariantList{i, u"CITY %1"_s.arg(i, 4, 10, QChar(u'0'))};
                 }) &&
            Fill(db, u"INSERT INTO Department (Code, Name) VALUES (?, ?)"_s, 20,
                 [](int i) {
                     return QVariantList{i, u"DEPARTMENT %1"_s.arg(i)};
                 }) &&
            Fill(db, u"INSERT INTO Manufacturer (Code, Name) VALUES (?, ?)"_s, kManufacturers,
                 [](int i) {
                     return QVariantList{i, u"MAKER %1 PHARMA"_s.arg(i, 4, 10, QChar(u'0'))};
                 }) &&
            Fill(db, u"INSERT INTO DosageForm (Code, Name) VALUES (?, ?)"_s, kForms,
                 [](int i) {
                     return QVariantList{i, u"FORM %1"_s.arg(i, 2, 10, QChar(u'0'))};
                 }) &&
            Fill(db,
                 u"INSERT INTO PharmaName (Code, Name, Dose, ModeAction) VALUES (?, ?, 'DOSE', 'ACTION')"_s,
                 kDrugs,
                 [](int i) {
                     return QVariantList{i, u"DRUG %1"_s.arg(i, 5, 10, QChar(u'0'))};
                 }) &&
            Fill(
                db,
                u"INSERT INTO DrugSafety (PharmaCode, SafeFieldCode, SafetyCode, Remark) VALUES (?, ?, ?, '')"_s,
                kDrugs * 7,
                [&pick](int i) {
                    return QVariantList{(i - 1) / 7 + 1, (i - 1) % 7 + 1, pick(6)};
                }) &&
            Fill(db, u"INSERT INTO Interaction (PharmaCode, PharmaCodeInt, IntTypeCode) VALUES (?, ?, 1)"_s,
                 kInteractionPairs * 2,
                 [&pairs](int i) {
                     const auto& [first, second] = pairs[(i - 1) / 2];
                     return i % 2 ? QVariantList{first, second} : QVariantList{second, first};
                 }) &&
            Fill(
                db,
                u"INSERT INTO GenericName (Code, Name, Company, Composition, Dosage) VALUES (?, ?, ?, '', '')"_s,
                kBrands,
                [&pick](int i) {
                    return QVariantList{i, u"BRAND %1"_s.arg(i, 6, 10, QChar(u'0')), pick(kManufacturers)};
                }) &&
            Fill(db, u"INSERT INTO GenericPharma (GenericCode, PharmaCode) VALUES (?, ?)"_s, kBrands,
                 [&pick](int i) {
                     return QVariantList{i, pick(kDrugs)};
                 }) &&
            Fill(db, u"INSERT INTO GenericPharma (GenericCode, PharmaCode) VALUES (?, ?)"_s, kBrands / 3,
                 [&pick](int i) {
                     return QVariantList{i * 3, pick(kDrugs)};
                 }) &&
            Fill(db, u"INSERT INTO Indication (Code, Name) VALUES (?, ?)"_s, kIndications,
                 [](int i) {
                     return QVariantList{i, u"INDICATION %1"_s.arg(i, 4, 10, QChar(u'0'))};
                 }) &&
            Fill(db, u"INSERT INTO PharmaIndication (PharmaCode, IndicationCode) VALUES (?, ?)"_s, kDrugs * 2,
                 [&pick](int i) {
                     return QVariantList{(i + 1) / 2, pick(kIndications)};
                 }) &&
            Fill(db, u"INSERT INTO GroupName (Code, Name) VALUES (?, ?)"_s, kGroups,
                 [](int i) {
                     return QVariantList{i, u"GROUP %1"_s.arg(i, 3, 10, QChar(u'0'))};
                 }) &&
            Fill(db, u"INSERT INTO GenericGroup (GenericCode, GroupCode) VALUES (?, ?)"_s, kBrands,
                 [&pick](int i) {
                     return QVariantList{i, pick(kGroups)};
                 }) &&
            Fill(db, u"INSERT INTO Symbols (Code, Name) VALUES (?, ?)"_s, 30,
                 [](int i) {
                     return QVariantList{i, u"%1-0-%1"_s.arg(i)};
                 }) &&
            Fill(db, u"INSERT INTO GenericDsgFm (GenericCode, DsgFmCode, Remark) VALUES (?, ?, '10 TAB')"_s,
                 kBrands * 2,
                 [](int i) {
                     const int brand = (i + 1) / 2;
                     return QVariantList{brand, 1 + (i % 2 ? brand : brand + 7) % kForms};
                 }) &&
            Fill(db, u"INSERT INTO Disease (Code, Name) VALUES (?, ?)"_s, kDiseases,
                 [](int i) {
                     return QVariantList{i, u"DISEASE %1"_s.arg(i, 4, 10, QChar(u'0'))};
                 }) &&
            Fill(db, u"INSERT INTO Patient (Code, Name, Sex, City, BirthDate) VALUES (?, ?, ?, ?, ?)"_s,
                 kPatients,
                 [&pick](int i) {
                     return QVariantList{i, u"PATIENT %1"_s.arg(i, 6, 10, QChar(u'0')),
                                         i % 2 ? u"M"_s : u"F"_s, pick(300),
                                         QDate(1940, 1, 1).addDays(pick(30000)).toString(Qt::ISODate)};
                 }) &&
            Fill(
                db,
                u"INSERT INTO PresHead (Code, PresDate, PatientCode, Amount, PayMode) VALUES (?, ?, ?, 200, 'C')"_s,
                kPrescriptions,
                [&pick](int i) {
                    return QVariantList{i, QDate(2016, 1, 1).addDays(i / 90).toString(Qt::ISODate),
                                        pick(kPatients)};
                }) &&
            Fill(db,
                 u"INSERT INTO PresDet (Code, GenericCode, DsgFmCode, SymbolCode, DsgRemarkCode, Dosage) "
                 "VALUES (?, ?, 1, 0, 0, '1-0-1')"_s,
                 kPrescriptions * kLinesPerPrescription,
                 [&pick](int i) {
                     return QVariantList{(i - 1) / kLinesPerPrescription + 1, pick(kBrands)};
                 }) &&
            Fill(db, u"INSERT INTO PresDisease (PrescriptionCode, DiseaseCode, Notes) VALUES (?, ?, '')"_s,
                 kPrescriptions, [&pick](int i) {
                     return QVariantList{i, pick(kDiseases)};
                 });
        ok = ok && db.commit();
        db.close();
    }
    QSqlDatabase::removeDatabase(u"bench-build"_s);
    std::printf("built %s in %.1f s\n", qPrintable(path), timer.elapsed() / 1000.0);
    return ok;
}

// Runs the operation `runs` times and prints its median and 95th percentile.
void Measure(const char* name, int runs, const std::function<void(int)>& operation,
             const std::function<void(int)>& prepare = {}) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        if (prepare)
            prepare(i);
        QElapsedTimer timer;
        timer.start();
        operation(i);
        times.push_back(timer.nsecsElapsed() / 1e6);
    }
    std::sort(times.begin(), times.end());
    const double median = times[times.size() / 2];
    const double p95 = times[std::min(times.size() - 1, static_cast<size_t>(times.size() * 0.95))];
    std::printf("%-44s median %8.2f ms   p95 %8.2f ms\n", name, median, p95);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        std::fprintf(stderr, "usage: vantrel-bench FOLDER [--runs N]\n");
        return 2;
    }
    const QString folder = QDir(args[1]).absolutePath() + u"/"_s;
    const int at = static_cast<int>(args.indexOf(u"--runs"_s));
    const int runs = at > 0 ? args.value(at + 1).toInt() : 50;
    QDir().mkpath(folder + u"Data"_s);
    const QString path = folder + u"Data/Vantrel.db"_s;
    if (!QFileInfo::exists(path) && !Build(path))
        return 1;

    QuietHost host;
    QuietPrompter prompter;
    Process process(host, prompter);
    ProcessState& s = process.state;
    s.RunMode = 1;
    SetPaths(s, folder);
    QString error;
    if (!OpenDatabase(process, &error) || !LoadControlParameters(process)) {
        std::fprintf(stderr, "the database did not open: %s\n", qPrintable(error));
        return 1;
    }
    QRandomGenerator random(7);
    Measure("in-use check of a brand (BRAND)", runs,
            [&](int) { IsCodeInUse(s, random.bounded(kBrands) + 1, u"BRAND"_s); });
    Measure("in-use check of a drug (PHARMA)", runs,
            [&](int) { IsCodeInUse(s, random.bounded(kDrugs) + 1, u"PHARMA"_s); });
    Measure("in-use check of a patient (PATIENT)", runs,
            [&](int) { IsCodeInUse(s, random.bounded(kPatients) + 1, u"PATIENT"_s); });
    Measure("in-use check of a disease (DISEASE)", runs,
            [&](int) { IsCodeInUse(s, random.bounded(kDiseases) + 1, u"DISEASE"_s); });
    Measure("duplicate name of a brand (BRAND)", runs, [&](int i) {
        IsDuplicateName(s, 0, u"BRAND %1"_s.arg(i * 37 % kBrands, 6, 10, QChar(u'0')), u"BRAND"_s, 1);
    });
    Measure("duplicate name of a patient (PATIENT)", runs, [&](int i) {
        IsDuplicateName(s, 0, u"PATIENT %1"_s.arg(i * 71 % kPatients, 6, 10, QChar(u'0')), u"PATIENT"_s, 1);
    });
    Measure("open the manufacturer master", runs, [&](int) {
        if (Screen* screen = process.open(u"Mst_Company"_s))
            process.closeScreen(*screen);
    });
    Measure("open the disease master", runs, [&](int) {
        if (Screen* screen = process.open(u"Mst_Disease"_s))
            process.closeScreen(*screen);
    });
    Measure("locator over every drug", runs, [&](int) {
        s.ScratchSql = {u"SELECT Code, Name FROM PharmaName ORDER BY Name"_s, {}};
        process.openModal(u"Find"_s);
    });

    // The prescription screen, driven as the doctor drives it.
    Measure("open the prescription screen", runs, [&](int) {
        if (Screen* screen = process.open(u"FrmPrescription"_s))
            process.closeScreen(*screen);
    });
    auto* pres = static_cast<FrmPrescription*>(process.open(u"FrmPrescription"_s));
    if (!pres) {
        std::fprintf(stderr, "the prescription screen did not open\n");
        return 1;
    }
    Measure("brand popup, no filter", runs, [&](int) {
        pres->brandFilters() = {};
        pres->BuildBrandList();
    });
    const std::pair<const char*, qint64 BrandFilters::*> filters[] = {
        {"brand popup, drug filter", &BrandFilters::drug},
        {"brand popup, indication filter", &BrandFilters::indication},
        {"brand popup, group filter", &BrandFilters::group},
        {"brand popup, manufacturer filter", &BrandFilters::company}};
    const int filterRange[] = {kDrugs, kIndications, kGroups, kManufacturers};
    for (int f = 0; f < 4; ++f) {
        Measure(filters[f].first, runs, [&](int) {
            pres->brandFilters() = {};
            pres->brandFilters().*(filters[f].second) = random.bounded(filterRange[f]) + 1;
            pres->BuildBrandList();
        });
    }
    pres->brandFilters() = {};
    pres->BuildBrandList();
    pres->click(*pres->control(u"CmdCtlButton"_s, 0));
    Measure("next prescription", runs, [&](int) { pres->click(*pres->control(u"CmdCtlButton"_s, 2)); });

    // A prescription of eight lines for a patient in every state, and a ninth line checked against it.
    pres->click(*pres->control(u"CmdCtlButton"_s, 4));
    pres->state().CurrentPatientCode = 1;
    pres->states.fill(true);
    for (int line = 0; line < 8; ++line)
        s.OpenDb.execute(u"INSERT INTO TmpDet (Code, Name, DsgFmCode, Dosage) SELECT Code, Name, ?, '1-0-1' "
                         "FROM GenericName WHERE Code = ?"_s,
                         {1 + (line * 11) % kForms, 1 + line * 997});
    BrandCheckContext context;
    context.screen = pres;
    context.lines = u"TmpDet"_s;
    context.allergies = u"TmpPresAllergy"_s;
    context.diseases = u"TmpDisease"_s;
    context.states = pres->states;
    s.OpenDb.execute(u"INSERT INTO TmpPresAllergy (AllergyCode, AllergyType, AgeCode) VALUES (17, 'D', 1), "
                     "(3, 'G', 1)"_s);
    s.OpenDb.execute(u"INSERT INTO TmpDisease (DiseaseCode, DiseaseName) VALUES (5, 'DISEASE 0005')"_s);
    Measure("CheckBrandLine, every check, 8 lines", runs, [&](int) {
        const qint64 brand = random.bounded(kBrands) + 1;
        CheckBrandLine(context, brand, 1 + (brand % kForms), true, 0);
    });

    // Save of a new prescription of eight lines.
    Measure(
        "new prescription", runs, [&](int) { pres->click(*pres->control(u"CmdCtlButton"_s, 4)); },
        [&](int) { pres->click(*pres->control(u"CmdCtlButton"_s, 9)); });
    Measure(
        "save a new prescription of 8 lines", runs,
        [&](int) { pres->click(*pres->control(u"CmdCtlButton"_s, 8)); },
        [&](int) {
            pres->click(*pres->control(u"CmdCtlButton"_s, 4));
            auto* patient = static_cast<ComboBox*>(pres->control(u"Cmb_Patient"_s));
            pres->choose(*patient, {u"PATIENT %1"_s.arg(random.bounded(kPatients) + 1, 6, 10, QChar(u'0'))});
            for (int line = 0; line < 8; ++line)
                s.OpenDb.execute(u"INSERT INTO TmpDet (Code, Name, DsgFmCode, Dosage) SELECT Code, Name, 1, "
                                 "'1-0-1' FROM GenericName WHERE Code = ?"_s,
                                 {random.bounded(kBrands) + 1});
        });

    // The patient master over 100,000 patients.
    Measure("open the patient master", runs, [&](int) {
        if (Screen* screen = process.open(u"Mst_Patient"_s))
            process.closeScreen(*screen);
    });
    Screen* patients = process.open(u"Mst_Patient"_s);
    Measure("next patient", runs, [&](int) { patients->click(*patients->control(u"Cmd"_s, 2)); });
    return 0;
}
