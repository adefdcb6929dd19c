#include "core/Startup.h"
#include "tests/support/Fakes.h"

#include <QFile>
#include <QXmlStreamReader>
#include <map>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

class ControlTest : public ::testing::Test {
protected:
    ProcessState& state() { return world.process.state; }
    Database& db() { return state().OpenDb; }

    void openDatabase() {
        SetPaths(state(), world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
    }

    Screen& open(const QString& name) {
        Screen* screen = world.process.open(name);
        EXPECT_NE(screen, nullptr) << name.toStdString();
        return *screen;
    }

    void click(Screen& screen, const QString& name) { screen.click(*screen.control(name)); }

    // Every column of the Control row, by name.
    std::map<QString, QVariant> controlRow() {
        std::map<QString, QVariant> values;
        const Row row = db().first(u"SELECT * FROM Control"_s).value_or(Row());
        for (const QString& column : row.columns())
            values[column] = row.value(column);
        return values;
    }

    test::TestWorld world;
};

// Each column gets a value of its own: texts their name, whole numbers 0 or 1 by turns, reals 250; the
// city, department and company columns a code that has a row.
void FillControlRow(test::TestWorld& world) {
    world.sql(u"INSERT INTO City (Code, Name) VALUES (5, 'AGRA')"_s);
    world.sql(u"INSERT INTO Department (Code, Name) VALUES (3, 'MEDICINE')"_s);
    world.sql(u"INSERT INTO Company (Code, CompanyName) VALUES (7, 'ACME')"_s);
    world.withFile([](QSqlDatabase& file) {
        QSqlQuery info(u"PRAGMA table_info(Control)"_s, file);
        QStringList sets;
        int i = 0;
        while (info.next()) {
            const QString column = info.value(1).toString();
            const QString type = info.value(2).toString();
            QString value;
            if (column.startsWith(u"City"_s))
                value = u"'5'"_s;
            else if (column == u"Department"_s)
                value = u"3"_s;
            else if (column == u"CompanyCode"_s)
                value = u"7"_s;
            else if (type.startsWith(u"TEXT"_s))
                value = u"'v"_s + column + u"'"_s;
            else if (type == u"REAL"_s)
                value = u"250"_s;
            else
                value = QString::number(i++ % 2);
            sets << column + u" = "_s + value;
        }
        QSqlQuery update(file);
        ASSERT_TRUE(update.exec(u"UPDATE Control SET "_s + sets.join(u", "_s)))
            << update.lastError().text().toStdString();
    });
}

TEST_F(ControlTest, SavingUnchangedScreensGivesBackTheRowAsItWas) {
    FillControlRow(world);
    world.sql(u"UPDATE Control SET UserProfileUpdated = 1"_s);
    openDatabase();
    for (const QString& screen : {u"ControlForm"_s, u"ControlOPD"_s}) {
        SCOPED_TRACE(screen.toStdString());
        const auto before = controlRow();
        click(open(screen), u"Cmd_Ok"_s);
        EXPECT_FALSE(world.process.isOpen(screen));
        const auto after = controlRow();
        for (const auto& [column, value] : before)
            EXPECT_EQ(after.at(column).toString(), value.toString()) << column.toStdString();
    }
    EXPECT_EQ(world.prompter.messages, QStringList());
}

TEST_F(ControlTest, AFailedSaveLeavesTheRowAndTheScreenAsTheyWere) {
    world.sql(u"INSERT INTO City (Code, Name) VALUES (5, 'AGRA')"_s);
    world.sql(u"INSERT INTO Prescriber (Name) VALUES ('DR. ASHA RAO')"_s);
    world.sql(u"CREATE TRIGGER KeepPrescriber BEFORE UPDATE ON Prescriber "
              "BEGIN SELECT RAISE(ABORT, 'prescriber row is kept'); END"_s);
    openDatabase();
    world.host.modal[u"FrmChangePassword"_s].push_back([](Screen& s) { s.click(*s.control(u"Cmd_Ok"_s)); });
    Screen& screen = open(u"ControlForm"_s);
    screen.paste(*screen.control(u"Txt_Regn"_s), u"NEW 1"_s);
    click(screen, u"Cmd_Ok"_s);
    EXPECT_TRUE(world.process.isOpen(u"ControlForm"_s));
    ASSERT_EQ(world.prompter.messages.size(), 1);
    EXPECT_TRUE(world.prompter.messages.front().startsWith(u"stop: "_s));
    EXPECT_TRUE(world.prompter.messages.front().contains(u"prescriber row is kept"_s));
    EXPECT_EQ(db().scalar(u"SELECT IFNULL(Registration, '') || '/' || UserProfileUpdated FROM Control"_s)
                  .toString(),
              u"/1"_s);
}

TEST_F(ControlTest, TheScreenSavesTheClinicUsersRowFromTheSameColumnsAsStartUp) {
    world.sql(u"UPDATE Control SET Registration = 'R1', Quali = 'MBBS', Department = 3, Address1 = 'A1', "
              "City1 = '4', phones1 = '0522', Mobile = '94', Pager = 'P', Fax = 'F', Email = 'e@x', "
              "Specialise = 'SP', Timing1 = '10 AM', DefaultFee = 300.5"_s);
    openDatabase();
    ASSERT_TRUE(LoadControlParameters(world.process));
    const QString columns =
        u"SELECT Name, ReGnNo, Quali, Department, Address, City, Phone, Cell, Pager, Fax, "
        "Email, Specilise, DayTiming, VisitAmt FROM Prescriber WHERE Code = ?"_s;
    const auto joined = [this, &columns](qint64 code) {
        const Row row = db().first(columns, {code}).value_or(Row());
        QStringList values;
        for (int i = 0; i < row.size(); ++i)
            values << row.at(i).toString();
        return values.join(u'|');
    };
    const qint64 code = state().ClinicPrescriberCode;
    const QString atStart = joined(code);
    EXPECT_EQ(atStart, u"DR. ASHA RAO|R1|MBBS|3|A1|4|0522|94|P|F|e@x|SP|10 AM|300.5"_s);

    std::map<QString, QString> screen = {{u"Clinic_User"_s, u"DR. ASHA RAO"_s},
                                         {u"Registration"_s, u"R2"_s},
                                         {u"Department"_s, u""_s},
                                         {u"City1"_s, u"0"_s},
                                         {u"DefaultFee"_s, u"450"_s}};
    const auto value = [&screen](const QString& parameter) {
        return screen.count(parameter) ? screen.at(parameter) : parameter.left(2);
    };
    ASSERT_TRUE(UpdateClinicPrescriber(db(), value));
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM Prescriber"_s).toInt(), 1) << "the row is edited, not added";
    EXPECT_EQ(joined(code), u"DR. ASHA RAO|R2|Qu|0|Ad|0|ph|Mo|Pa|Fa|Em|Sp|Ti|450"_s)
        << "a blank department stores 0";

    screen[u"Clinic_User"_s] = u"DR. NEW NAME"_s;
    ASSERT_TRUE(UpdateClinicPrescriber(db(), value));
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM Prescriber WHERE Name = 'DR. NEW NAME'"_s).toInt(), 1)
        << "another clinic user gets a row of its own";
    EXPECT_EQ(joined(code), u"DR. ASHA RAO|R2|Qu|0|Ad|0|ph|Mo|Pa|Fa|Em|Sp|Ti|450"_s);
}

// The designed forms: every control has a widget of a fitting kind under its name, and a control of a tab
// stands on that tab's page, the others outside the tab strip.
struct FormWidget {
    QString kind;
    int page = -1;
};

std::map<QString, FormWidget> ReadForm(const QString& screen, int* pages) {
    QFile file(QStringLiteral(VANTREL_SOURCE_DIR) + u"/core/"_s + screen + u".ui"_s);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << screen.toStdString();
    std::map<QString, FormWidget> widgets;
    std::vector<std::pair<QString, int>> open; // name and page of the widgets being read
    QXmlStreamReader xml(&file);
    *pages = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == u"widget"_s) {
            const QString name = xml.attributes().value(u"name"_s).toString();
            int page = open.empty() ? -1 : open.back().second;
            if (!open.empty() && open.back().first == u"SSTab1"_s)
                page = (*pages)++;
            widgets[name] = {xml.attributes().value(u"class"_s).toString(), page};
            open.emplace_back(name, page);
        } else if (xml.isEndElement() && xml.name() == u"widget"_s) {
            open.pop_back();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return widgets;
}

QString WidgetKind(const Control& control) {
    switch (control.kind()) {
    case ControlKind::TextBox:
        return static_cast<const TextBox&>(control).multiLine() ? u"QPlainTextEdit"_s : u"QLineEdit"_s;
    case ControlKind::CheckBox:
        return u"QCheckBox"_s;
    case ControlKind::Option:
        return u"QRadioButton"_s;
    case ControlKind::Combo:
        return u"QComboBox"_s;
    case ControlKind::Button:
        return u"QPushButton"_s;
    case ControlKind::TabStrip:
        return u"QTabWidget"_s;
    case ControlKind::Frame:
        return u"QGroupBox"_s;
    default:
        return u"QLabel"_s;
    }
}

TEST_F(ControlTest, TheFormsHoldEveryControlOnItsOwnTab) {
    for (const QString& name : {u"ControlForm"_s, u"ControlOPD"_s, u"FrmChangePassword"_s}) {
        SCOPED_TRACE(name.toStdString());
        int pages = 0;
        const auto widgets = ReadForm(name, &pages);
        const auto screen = ScreenRegistry::instance().create(name, world.process);
        ASSERT_TRUE(screen);
        for (const Control* control : screen->controls()) {
            const QString widget = control->index() < 0
                                       ? control->name()
                                       : control->name() + u"_"_s + QString::number(control->index());
            SCOPED_TRACE(widget.toStdString());
            const auto it = widgets.find(widget);
            ASSERT_NE(it, widgets.end());
            EXPECT_EQ(it->second.kind, WidgetKind(*control));
            if (!control->tabStrip().isEmpty()) {
                EXPECT_EQ(it->second.page, control->tabPage());
            } else if (control->canTakeFocus() && control->kind() != ControlKind::TabStrip) {
                EXPECT_EQ(it->second.page, -1);
            }
            if (const auto* strip = qobject_cast<const TabStrip*>(control)) {
                EXPECT_EQ(pages, strip->tabs.size());
            }
        }
    }
}

} // namespace
} // namespace vantrel
