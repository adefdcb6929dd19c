#include "core/Startup.h"

#include "core/Host.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Routines.h"
#include "core/Screen.h"

#include <QDir>
#include <optional>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

bool CheckScreenResolution(Process& process) {
    const QSize size = process.host.screenSize();
    if (size.width() >= 800 && size.height() >= 600)
        return true;
    process.prompter.stop(u"Screen Resolution :\n\n"_s + QString::number(size.width()) + u" x "_s +
                          QString::number(size.height()) + u" Pixels\n\n"_s +
                          u"It is Recommended that You Change Your Screen Resolution to \n\n"_s +
                          u"800 x 600 Pixels And Run Vantrel Again."_s);
    return false;
}

} // namespace

void PrepareImageFolders(ProcessState& state) {
    state.ImageExt = u".Bmp"_s;
    state.ImagePath = state.AppPath + u"Img000.001/"_s;
    state.SnapShotPath = state.AppPath + u"SnapShots/"_s;
    QDir().mkpath(state.ImagePath);
    QDir().mkpath(state.SnapShotPath);
}

void SetPaths(ProcessState& state, const QString& programFolder) {
    state.AppPath = AddBackslash(programFolder);
    state.HelpFile = state.AppPath + u"Vnhelp.html"_s;
    state.DataPath = state.AppPath + u"Data/"_s;
    state.DbPath = state.AppPath + u"Data/Vantrel.db"_s;
    state.DocumentPath = AddBackslash(state.AppPath + u"Bin$01.001"_s);
    state.TopicPath = AddBackslash(state.DocumentPath + u"HtpBin$1.001"_s);
    state.ChartPath = AddBackslash(state.DocumentPath + u"PaeBin$1.001"_s);
}

namespace {

void SwitchToRestore(Process& process) {
    process.host.hourglass(false);
    if (Screen* splash = process.find(u"Splash"_s))
        process.closeScreen(*splash);
    process.prompter.stop(u"Data Base not Found or Corrupted. Switching to Re-Store Option."_s);
    process.state.RestoreOnly = true;
    process.open(u"MainForm"_s);
    process.openModal(u"FrmReStore"_s);
}

} // namespace

QString ProperCase(const QString& text) {
    QString out = text.toLower();
    bool wordStart = true;
    for (QChar& c : out) {
        if (c.isSpace()) {
            wordStart = true;
        } else if (wordStart) {
            c = c.toUpper();
            wordStart = false;
        }
    }
    return out;
}

bool OpenDatabase(Process& process, QString* error) {
    Database& db = process.state.OpenDb;
    if (!db.open(process.state.DbPath, error))
        return false;
    if (db.scalar(u"SELECT COUNT(*) FROM Control"_s).toInt() < 1) {
        *error = db.lastError().isEmpty() ? u"The Control row is missing."_s : db.lastError();
        db.close();
        return false;
    }
    return true;
}

namespace {

// The clinic user's Prescriber row: each column, the parameter it is written from and how it is stored.
struct PrescriberColumn {
    QString column;
    QString parameter;
    QMetaType::Type type;
};

const std::vector<PrescriberColumn>& ClinicPrescriberColumns() {
    static const std::vector<PrescriberColumn> columns = {
        {u"Name"_s, u"Clinic_User"_s, QMetaType::QString},
        {u"ReGnNo"_s, u"Registration"_s, QMetaType::QString},
        {u"Quali"_s, u"Quali"_s, QMetaType::QString},
        {u"Department"_s, u"Department"_s, QMetaType::LongLong},
        {u"Address"_s, u"Address1"_s, QMetaType::QString},
        {u"City"_s, u"City1"_s, QMetaType::QString},
        {u"Phone"_s, u"phones1"_s, QMetaType::QString},
        {u"Cell"_s, u"Mobile"_s, QMetaType::QString},
        {u"Pager"_s, u"Pager"_s, QMetaType::QString},
        {u"Fax"_s, u"Fax"_s, QMetaType::QString},
        {u"Email"_s, u"Email"_s, QMetaType::QString},
        {u"Specilise"_s, u"Specialise"_s, QMetaType::QString},
        {u"DayTiming"_s, u"Timing1"_s, QMetaType::QString},
        {u"VisitAmt"_s, u"DefaultFee"_s, QMetaType::Double},
    };
    return columns;
}

std::optional<qint64> FindClinicPrescriber(Database& db, const QString& clinicUser) {
    if (const auto row = db.first(u"SELECT Code FROM Prescriber WHERE Name = ?"_s, {clinicUser}))
        return row->integer(u"Code"_s);
    return std::nullopt;
}

// Edits the Prescriber row `code`, or adds one when there is none, from the parameters `value` gives as
// text; a blank number stores 0. Returns the row's code, 0 when the statement failed.
qint64 WriteClinicPrescriber(Database& db, std::optional<qint64> code, const ParameterText& value) {
    QStringList columns;
    QVariantList values;
    for (const PrescriberColumn& c : ClinicPrescriberColumns()) {
        const QString text = value(c.parameter);
        columns << c.column;
        switch (c.type) {
        case QMetaType::LongLong:
            values << text.trimmed().toLongLong();
            break;
        case QMetaType::Double:
            values << text.trimmed().toDouble();
            break;
        default:
            values << text;
            break;
        }
    }
    if (code) {
        if (db.execute(u"UPDATE Prescriber SET %1 = ? WHERE Code = ?"_s.arg(columns.join(u" = ?, "_s)),
                       values + QVariantList{*code}) < 0)
            return 0;
        return *code;
    }
    const QStringList marks(columns.size(), u"?"_s);
    if (db.execute(
            u"INSERT INTO Prescriber (%1) VALUES (%2)"_s.arg(columns.join(u", "_s), marks.join(u", "_s)),
            values) < 0)
        return 0;
    return db.lastInsertId();
}

} // namespace

void EnsureClinicPrescriber(Process& process) {
    ProcessState& s = process.state;
    const ClinicParameters& p = s.Params;
    if (const auto code = FindClinicPrescriber(s.OpenDb, p.text(u"Clinic_User"_s))) {
        s.ClinicPrescriberCode = *code;
        return;
    }
    if (s.RunMode == 1) {
        s.ClinicPrescriberCode = WriteClinicPrescriber(
            s.OpenDb, std::nullopt, [&p](const QString& parameter) { return p.text(parameter); });
        return;
    }
    process.prompter.stop(
        u"Clinic User's Information Missing. Please Run the Main (Server) Application First."_s);
    s.ClinicPrescriberCode = 0;
    ExitApplication(process);
}

bool UpdateClinicPrescriber(Database& db, const ParameterText& value) {
    return WriteClinicPrescriber(db, FindClinicPrescriber(db, value(u"Clinic_User"_s)), value) > 0;
}

bool LoadControlParameters(Process& process) {
    ProcessState& s = process.state;
    QString error;
    if (!s.Params.read(s.OpenDb, s.RunMode, &error))
        return false;
    const QDate today = s.clock.today();
    s.CurrentYear = today.year();
    s.CurrentMonth = today.month();
    EnsureClinicPrescriber(process);
    if (s.ClinicPrescriberCode < 1)
        return true;
    for (const QString& column : {u"City"_s, u"City1"_s, u"City2"_s}) {
        const QVariant name =
            s.OpenDb.scalar(u"SELECT Name FROM City WHERE Code = ?"_s, {s.Params.integer(column)});
        s.Params.set(column, name.isNull() ? QString() : name.toString());
    }
    s.PhysicalList.clear();
    const QString visibleOnly = s.Params.flag(u"ShowPhysical"_s) ? u" WHERE EVisible <> 0"_s : QString();
    const Rows rows =
        s.OpenDb.select(u"SELECT Code, Name FROM Physical"_s + visibleOnly + u" ORDER BY Name"_s);
    s.PhysicalList.reserve(rows.size());
    for (const Row& row : rows)
        s.PhysicalList.push_back({row.integer(u"Code"_s), row.text(u"Name"_s), QString()});
    return true;
}

void Main(Process& process, int runMode, const QString& programFolder) {
    ProcessState& s = process.state;
    Host& host = process.host;
    if (host.anotherInstanceRunning()) {
        process.prompter.info(u"Application Already Running."_s);
        ExitApplication(process);
        return;
    }
    if (!CheckScreenResolution(process)) {
        ExitApplication(process);
        return;
    }
    host.hourglass(true);
    process.open(u"Splash"_s);
    host.processEvents();
    s.RunMode = runMode;
    SetPaths(s, programFolder);
    QString error;
    if (!OpenDatabase(process, &error)) {
        SwitchToRestore(process);
        return;
    }
    LoadControlParameters(process);
    if (s.ClinicPrescriberCode <= 0)
        return;
    process.playSound(u"START"_s);
    PrepareImageFolders(s);
    const QDateTime ready = s.clock.now();
    host.waitUntil(ready, 4);
    if (Screen* splash = process.find(u"Splash"_s))
        process.closeScreen(*splash);
    host.hourglass(false);
    process.openModal(u"FrmAuthentication"_s);
    if (!s.LoginCancelled && !s.Exiting)
        process.open(u"MainForm"_s);
}

void ExitApplication(Process& process) {
    ProcessState& s = process.state;
    if (s.Exiting)
        return;
    s.Exiting = true;
    s.PhysicalList.clear();
    s.OpenDb.close();
    Screen* mainForm = nullptr;
    for (Screen* screen : process.openScreens()) {
        if (screen->name() == u"MainForm"_s)
            mainForm = screen;
        else
            process.closeScreen(*screen);
    }
    if (mainForm)
        process.closeScreen(*mainForm);
    process.host.quit();
}

void SetScreenTitle(Screen& screen) {
    screen.host().setMainTitle(screen.state().AppTitle + u"   ["_s + screen.caption() + u"]"_s);
    screen.setCaption(QString());
}

ColourPair FamilyColours(Process& process, const QString& family) {
    const ClinicParameters& p = process.state.Params;
    const QString fore = family + u"Fore"_s;
    const QString back = family + u"Back"_s;
    if (family.isEmpty() || !p.has(fore) || !p.has(back))
        return {};
    return {true, static_cast<unsigned>(p.integer(fore)), static_cast<unsigned>(p.integer(back))};
}

} // namespace vantrel
