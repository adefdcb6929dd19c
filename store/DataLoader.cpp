#include "store/DataLoader.h"

#include "store/Schema.h"

#include <QAtomicInteger>
#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringDecoder>
#include <QTemporaryFile>
#include <QTime>
#include <QVariant>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <system_error>
#include <vector>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

using schema::Type;

bool fail(QString* error, const QString& text) {
    if (error)
        *error = text;
    return false;
}

QString quoted(const char* identifier) {
    return u"\"%1\""_s.arg(QString::fromLatin1(identifier));
}

// One row of a data file, its values converted for binding. A field of a reference column holds the name
// it was written with until the load resolves it to a code.
struct DataRow {
    int line;
    QVariantList values;
};

// A column written `Column=Table` or `Column=Table.NameColumn`: its fields name rows of that table, and the
// load stores their key.
struct Reference {
    const schema::Table* table = nullptr;
    const schema::Column* key = nullptr;
    const schema::Column* name = nullptr;
};

// The parsed content of one data file.
struct DataFile {
    const schema::Table* table = nullptr;
    std::vector<const schema::Column*> columns;
    std::vector<std::optional<Reference>> references;
    // The two columns of a directive "#! both-ways A B": every row is stored also with the two swapped.
    std::optional<std::pair<int, int>> bothWays;
    std::vector<DataRow> rows;
};

// The key column of a table that other tables point at: its counter or assigned number.
const schema::Column* keyColumn(const schema::Table& table) {
    for (const schema::Column& column : table.columns) {
        if (column.type == Type::Counter || column.type == Type::KeyLong)
            return &column;
    }
    return nullptr;
}

// Reads the right side of a column header `Column=Table[.NameColumn]`, or says why it can not be used.
std::optional<Reference> reference(const schema::Column& column, const QString& target, QString* why) {
    if (column.type != Type::Long && column.type != Type::Integer) {
        *why = u"column %1 holds no code, so it can not name rows of %2"_s.arg(
            QString::fromLatin1(column.name), target);
        return std::nullopt;
    }
    const qsizetype dot = target.indexOf(u'.');
    const QString tableName = dot < 0 ? target : target.left(dot);
    Reference out;
    out.table = schema::findTable(tableName);
    if (!out.table || out.table->staging) {
        *why = u"there is no table named %1"_s.arg(tableName);
        return std::nullopt;
    }
    out.key = keyColumn(*out.table);
    out.name = schema::findColumn(*out.table, dot < 0 ? u"Name"_s : target.mid(dot + 1));
    if (!out.key || !out.name || (out.name->type != Type::Text && out.name->type != Type::KeyText)) {
        *why = u"rows of %1 can not be named: it needs a code and a name column"_s.arg(target);
        return std::nullopt;
    }
    return out;
}

// Undoes the escapes \t, \n and \\ of a field; no value for any other use of the backslash.
std::optional<QString> unescaped(QStringView field) {
    QString out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        const QChar c = field.at(i);
        if (c != u'\\') {
            out.append(c);
            continue;
        }
        if (++i == field.size())
            return std::nullopt;
        switch (field.at(i).unicode()) {
        case u't':
            out.append(u'\t');
            break;
        case u'n':
            out.append(u'\n');
            break;
        case u'\\':
            out.append(u'\\');
            break;
        default:
            return std::nullopt;
        }
    }
    return out;
}

bool matches(const QString& text, const QString& pattern) {
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

// A whole number within the range of the column's type.
std::optional<qint64> wholeNumber(const QString& text, qint64 lowest, qint64 highest) {
    if (!matches(text, u"-?[0-9]{1,18}"_s))
        return std::nullopt;
    const qint64 value = text.toLongLong();
    if (value < lowest || value > highest)
        return std::nullopt;
    return value;
}

// The bound value of one field for its column, or no value with the reason in why. An empty field is
// NULL, except for a Boolean, which is always 0 or 1, and a text key, which can not be missing.
std::optional<QVariant> converted(const QString& text, const schema::Column& column, QString* why) {
    const auto refuse = [&](const QString& reason) -> std::optional<QVariant> {
        *why = u"column %1: %2"_s.arg(QString::fromLatin1(column.name), reason);
        return std::nullopt;
    };
    if (text.isEmpty()) {
        if (column.type == Type::Boolean)
            return refuse(u"a Boolean is 0 or 1, never empty"_s);
        if (column.type == Type::KeyText)
            return refuse(u"the key can not be empty"_s);
        return QVariant();
    }
    constexpr qint64 longMin = -2147483648LL;
    constexpr qint64 longMax = 2147483647LL;
    switch (column.type) {
    case Type::Counter:
    case Type::KeyLong:
    case Type::Long:
        if (const auto value = wholeNumber(text, longMin, longMax))
            return QVariant(*value);
        return refuse(u"\"%1\" is not a whole number of 32 bits"_s.arg(text));
    case Type::Integer:
        if (const auto value = wholeNumber(text, -32768, 32767))
            return QVariant(*value);
        return refuse(u"\"%1\" is not a whole number of 16 bits"_s.arg(text));
    case Type::Double:
    case Type::Single:
        if (matches(text, u"-?[0-9]+(\\.[0-9]+)?"_s))
            return QVariant(text.toDouble());
        return refuse(u"\"%1\" is not a number"_s.arg(text));
    case Type::Boolean:
        if (text == u"0"_s || text == u"1"_s)
            return QVariant(text.toInt());
        return refuse(u"\"%1\" is not a Boolean 0 or 1"_s.arg(text));
    case Type::Date:
        if (matches(text, u"[0-9]{4}-[0-9]{2}-[0-9]{2}"_s) && QDate::fromString(text, Qt::ISODate).isValid())
            return QVariant(text);
        return refuse(u"\"%1\" is not a date YYYY-MM-DD"_s.arg(text));
    case Type::DateTime:
        if (matches(text, u"[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}"_s) &&
            QDateTime::fromString(text, u"yyyy-MM-dd HH:mm:ss"_s).isValid())
            return QVariant(text);
        return refuse(u"\"%1\" is not a date and time YYYY-MM-DD HH:MM:SS"_s.arg(text));
    case Type::Time:
        if (matches(text, u"[0-9]{2}:[0-9]{2}:[0-9]{2}"_s) &&
            QTime::fromString(text, u"HH:mm:ss"_s).isValid())
            return QVariant(text);
        return refuse(u"\"%1\" is not a time of day HH:MM:SS"_s.arg(text));
    case Type::KeyText:
    case Type::Text:
    case Type::Memo:
        return QVariant(text);
    }
    return refuse(u"the column has no known type"_s);
}

// Reads and checks a whole data file before anything is written.
bool parse(const QString& path, DataFile* out, QString* error) {
    const QFileInfo info(path);
    const auto fileError = [&](const QString& text) { return fail(error, u"%1: %2"_s.arg(path, text)); };
    const auto lineError = [&](int line, const QString& text) {
        return fail(error, u"%1:%2: %3"_s.arg(path).arg(line).arg(text));
    };
    if (info.suffix().compare(u"tsv"_s, Qt::CaseInsensitive) != 0)
        return fileError(u"a data file is named after its table, <Table>.tsv"_s);
    const schema::Table* table = schema::findTable(info.completeBaseName());
    if (!table)
        return fileError(u"there is no table named %1"_s.arg(info.completeBaseName()));
    if (table->staging)
        return fileError(
            u"%1 is a staging table, which the program creates empty"_s.arg(info.completeBaseName()));

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fileError(file.errorString());
    const QByteArray bytes = file.readAll();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return fileError(u"the file is not UTF-8 text"_s);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);

    out->table = table;
    out->columns.clear();
    out->references.clear();
    out->bothWays.reset();
    out->rows.clear();
    std::vector<std::pair<int, QString>> directives;
    bool inHeader = true;
    bool haveColumns = false;
    const QStringList lines = text.split(u'\n');
    for (int i = 0; i < lines.size(); ++i) {
        const int lineNo = i + 1;
        QString line = lines.at(i);
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.isEmpty())
            continue;
        if (inHeader && line.startsWith(u"#!"_s)) {
            directives.emplace_back(lineNo, line.mid(2).simplified());
            continue;
        }
        if (inHeader && line.startsWith(u'#'))
            continue;
        inHeader = false;
        const QStringList fields = line.split(u'\t');
        if (!haveColumns) {
            haveColumns = true;
            for (const QString& field : fields) {
                const qsizetype equals = field.indexOf(u'=');
                const QString name = equals < 0 ? field : field.left(equals);
                const schema::Column* column = schema::findColumn(*table, name);
                if (!column)
                    return lineError(lineNo, u"table %1 has no column \"%2\""_s.arg(
                                                 QString::fromLatin1(table->name), name));
                for (const schema::Column* seen : out->columns) {
                    if (seen == column)
                        return lineError(lineNo, u"column \"%1\" is named twice"_s.arg(name));
                }
                out->columns.push_back(column);
                if (equals < 0) {
                    out->references.emplace_back();
                    continue;
                }
                QString why;
                const std::optional<Reference> target = reference(*column, field.mid(equals + 1), &why);
                if (!target)
                    return lineError(lineNo, why);
                out->references.push_back(target);
            }
            for (const auto& [directiveLine, directive] : directives) {
                const QStringList words = directive.split(u' ');
                const auto at = [&](const QString& name) {
                    const schema::Column* column = schema::findColumn(*table, name);
                    const auto found = std::find(out->columns.cbegin(), out->columns.cend(), column);
                    return column && found != out->columns.cend()
                               ? static_cast<int>(found - out->columns.cbegin())
                               : -1;
                };
                if (words.size() != 3 || words.at(0) != u"both-ways"_s)
                    return lineError(directiveLine, u"the only directive is \"#! both-ways A B\""_s);
                const int first = at(words.at(1));
                const int second = at(words.at(2));
                if (first < 0 || second < 0 || first == second)
                    return lineError(directiveLine, u"both-ways names two different columns of the file"_s);
                out->bothWays = std::make_pair(first, second);
            }
            continue;
        }
        if (fields.size() != static_cast<qsizetype>(out->columns.size())) {
            return lineError(
                lineNo,
                u"%1 fields where the header names %2 columns"_s.arg(fields.size()).arg(out->columns.size()));
        }
        DataRow row{lineNo, {}};
        for (qsizetype f = 0; f < fields.size(); ++f) {
            const schema::Column& column = *out->columns.at(static_cast<std::size_t>(f));
            const std::optional<QString> value = unescaped(fields.at(f));
            if (!value) {
                return lineError(lineNo, u"column %1: a backslash is written only as \\t, \\n or \\\\"_s.arg(
                                             QString::fromLatin1(column.name)));
            }
            if (out->references.at(static_cast<std::size_t>(f))) {
                row.values.append(value->isEmpty() ? QVariant() : QVariant(*value));
                continue;
            }
            QString why;
            const std::optional<QVariant> bound = converted(*value, column, &why);
            if (!bound)
                return lineError(lineNo, why);
            row.values.append(*bound);
        }
        out->rows.push_back(std::move(row));
    }
    if (!haveColumns)
        return fileError(u"the line of column names is missing"_s);
    return true;
}

// Turns the names of the reference columns into the codes of the rows they name. A name must match one
// row exactly, capitals and blanks included.
bool resolveReferences(QSqlDatabase& db, const QString& path, DataFile* data, QString* error) {
    for (std::size_t c = 0; c < data->columns.size(); ++c) {
        const std::optional<Reference>& target = data->references.at(c);
        if (!target)
            continue;
        QSqlQuery find(db);
        const QString sql = u"SELECT %1 FROM %2 WHERE %3 = ? COLLATE BINARY LIMIT 2"_s.arg(
            quoted(target->key->name), quoted(target->table->name), quoted(target->name->name));
        if (!find.prepare(sql))
            return fail(error, u"%1: %2"_s.arg(path, find.lastError().text()));
        QHash<QString, qint64> known;
        for (DataRow& row : data->rows) {
            QVariant& value = row.values[static_cast<qsizetype>(c)];
            if (value.isNull())
                continue;
            const QString name = value.toString();
            if (const auto hit = known.constFind(name); hit != known.cend()) {
                value = *hit;
                continue;
            }
            find.addBindValue(name);
            if (!find.exec())
                return fail(error, u"%1:%2: %3"_s.arg(path).arg(row.line).arg(find.lastError().text()));
            std::vector<qint64> codes;
            while (find.next())
                codes.push_back(find.value(0).toLongLong());
            const QString what =
                u"column %1: %2 \"%3\""_s.arg(QString::fromLatin1(data->columns.at(c)->name),
                                              QString::fromLatin1(target->table->name), name);
            if (codes.empty())
                return fail(error, u"%1:%2: %3 is not there"_s.arg(path).arg(row.line).arg(what));
            if (codes.size() > 1)
                return fail(error, u"%1:%2: %3 names more than one row"_s.arg(path).arg(row.line).arg(what));
            known.insert(name, codes.front());
            value = codes.front();
        }
    }
    return true;
}

// Stores the rows of a both-ways file in the other direction too. A pair written twice, in either order,
// is refused: the second row would either repeat or contradict the first.
bool addReverseRows(const QString& path, DataFile* data, QString* error) {
    if (!data->bothWays)
        return true;
    const auto [first, second] = *data->bothWays;
    QHash<std::pair<qint64, qint64>, int> seen;
    std::vector<DataRow> reversed;
    for (const DataRow& row : data->rows) {
        const qint64 a = row.values.at(first).toLongLong();
        const qint64 b = row.values.at(second).toLongLong();
        if (a == b)
            return fail(error,
                        u"%1:%2: a row of a both-ways file joins a row to itself"_s.arg(path).arg(row.line));
        const auto pair = std::minmax(a, b);
        if (const auto earlier = seen.constFind(pair); earlier != seen.cend()) {
            return fail(error, u"%1:%2: the pair is already written on line %3"_s.arg(path).arg(row.line).arg(
                                   *earlier));
        }
        seen.insert(pair, row.line);
        DataRow other = row;
        other.values[first] = row.values.at(second);
        other.values[second] = row.values.at(first);
        reversed.push_back(std::move(other));
    }
    data->rows.insert(data->rows.end(), std::make_move_iterator(reversed.begin()),
                      std::make_move_iterator(reversed.end()));
    return true;
}

bool execute(QSqlDatabase& db, const QString& sql, QString* error) {
    QSqlQuery query(db);
    return query.exec(sql) || fail(error, query.lastError().text());
}

// The tables that the header of a data file names in its reference columns.
QStringList referencedTables(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        QStringList tables;
        for (const QString& field : line.split(u'\t')) {
            const qsizetype equals = field.indexOf(u'=');
            if (equals >= 0)
                tables << field.mid(equals + 1).section(u'.', 0, 0);
        }
        return tables;
    }
    return {};
}

// The data files in an order that loads every table before the files that name its rows; otherwise by
// name. A circle of references can not be loaded.
bool loadOrder(const QStringList& files, QStringList* ordered, QString* error) {
    QHash<QString, QString> fileOfTable;
    for (const QString& path : files)
        fileOfTable.insert(QFileInfo(path).completeBaseName().toLower(), path);
    QHash<QString, int> state; // 1 being placed, 2 placed
    const std::function<bool(const QString&)> place = [&](const QString& path) {
        const int now = state.value(path);
        if (now == 2)
            return true;
        if (now == 1)
            return fail(error, u"%1: its references come back to itself"_s.arg(path));
        state.insert(path, 1);
        for (const QString& table : referencedTables(path)) {
            const QString needed = fileOfTable.value(table.toLower());
            if (!needed.isEmpty() && needed != path && !place(needed))
                return false;
        }
        state.insert(path, 2);
        ordered->append(path);
        return true;
    };
    for (const QString& path : files) {
        if (!place(path))
            return false;
    }
    return true;
}

// Creates the schema in an empty file and loads the given data files into it, then compacts it.
bool fillDatabase(const QString& path, const QStringList& files, QString* error) {
    static QAtomicInteger<int> counter;
    const QString connection = u"vantrel-databuild-%1"_s.arg(counter.fetchAndAddRelaxed(1));
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection);
        db.setDatabaseName(path);
        ok = db.open() || fail(error, u"%1: %2"_s.arg(path, db.lastError().text()));
        ok = ok && execute(db, u"PRAGMA journal_mode = DELETE"_s, error) && schema::migrate(db, error);
        for (const QString& file : files)
            ok = ok && loadTableFile(db, file, error);
        ok = ok && execute(db, u"VACUUM"_s, error);
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
    return ok;
}

std::filesystem::path fsPath(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

// Builds one database beside its target and moves it over the target only when it is complete.
bool buildDatabase(const QString& target, const QStringList& files, QString* error) {
    QTemporaryFile temp(target + u".XXXXXX"_s);
    if (!temp.open())
        return fail(error, u"%1: %2"_s.arg(temp.fileTemplate(), temp.errorString()));
    const QString building = temp.fileName();
    temp.close();
    if (!fillDatabase(building, files, error))
        return false;
    temp.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup |
                        QFileDevice::ReadOther);
    std::error_code code;
    std::filesystem::rename(fsPath(building), fsPath(target), code);
    if (code)
        return fail(error, u"%1: %2"_s.arg(target, QString::fromStdString(code.message())));
    return true;
}

} // namespace

QStringList programTables() {
    return {u"Control"_s,      u"Printing"_s, u"InvPrinting"_s, u"PhotoNO"_s,   u"SafetyPara"_s,
            u"SafetyStatus"_s, u"Level2"_s,   u"Level3"_s,      u"OPDLevel2"_s, u"OPDLevel3"_s};
}

bool loadTableFile(QSqlDatabase& db, const QString& path, QString* error) {
    DataFile data;
    if (!parse(path, &data, error) || !resolveReferences(db, path, &data, error) ||
        !addReverseRows(path, &data, error))
        return false;
    QStringList names;
    QStringList marks;
    for (const schema::Column* column : data.columns) {
        names << quoted(column->name);
        marks << u"?"_s;
    }
    const QString sql = u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(quoted(data.table->name),
                                                                 names.join(u", "_s), marks.join(u", "_s));
    if (!db.transaction())
        return fail(error, u"%1: %2"_s.arg(path, db.lastError().text()));
    QSqlQuery insert(db);
    if (!insert.prepare(sql)) {
        const QString text = insert.lastError().text();
        db.rollback();
        return fail(error, u"%1: %2"_s.arg(path, text));
    }
    for (const DataRow& row : data.rows) {
        for (int i = 0; i < row.values.size(); ++i)
            insert.bindValue(i, row.values.at(i));
        if (!insert.exec()) {
            const QString text = insert.lastError().text();
            insert.finish();
            db.rollback();
            return fail(error, u"%1:%2: %3"_s.arg(path).arg(row.line).arg(text));
        }
    }
    insert.finish();
    if (!db.commit()) {
        const QString text = db.lastError().text();
        db.rollback();
        return fail(error, u"%1: %2"_s.arg(path, text));
    }
    return true;
}

bool buildDeliveredDatabases(const QString& dataDir, const QString& outDir, QString* error) {
    const QDir data(dataDir);
    if (!data.exists())
        return fail(error, u"%1: the data folder does not exist"_s.arg(dataDir));
    const QStringList names = data.entryList({u"*.tsv"_s}, QDir::Files, QDir::Name);
    QStringList every;
    QStringList program;
    for (const QString& name : names) {
        every << data.filePath(name);
        if (programTables().contains(QFileInfo(name).completeBaseName(), Qt::CaseInsensitive))
            program << data.filePath(name);
    }
    for (const QString& table : programTables()) {
        const bool present = std::any_of(program.cbegin(), program.cend(), [&](const QString& path) {
            return QFileInfo(path).completeBaseName().compare(table, Qt::CaseInsensitive) == 0;
        });
        if (!present)
            return fail(error,
                        u"%1: %2.tsv is missing; the program can not run without it"_s.arg(dataDir, table));
    }
    if (!QDir().mkpath(outDir))
        return fail(error, u"%1: the output folder can not be created"_s.arg(outDir));
    QStringList everyOrdered;
    QStringList programOrdered;
    if (!loadOrder(every, &everyOrdered, error) || !loadOrder(program, &programOrdered, error))
        return false;
    const QDir out(outDir);
    return buildDatabase(out.filePath(u"Vantrel.db"_s), everyOrdered, error) &&
           buildDatabase(out.filePath(u"Schema.db"_s), programOrdered, error);
}

} // namespace vantrel
