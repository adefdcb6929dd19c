#include "prescription/AddToList.h"

#include "core/Prompter.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

qint64 AddToList(Database& db, Prompter& prompter, const QString& kind, const QString& text) {
    const bool complaint = kind == u"COMPLAINT"_s;
    if (!complaint && kind != u"DSGREMARK"_s)
        return 0;
    const QString table = complaint ? u"Complaints"_s : u"DsgRemark"_s;
    const QString name = text.trimmed().toUpper();
    if (name.isEmpty())
        return 0;
    if (db.exists(u"SELECT 1 FROM %1 WHERE Name = ?"_s.arg(table), {name})) {
        prompter.stop(complaint ? u"Duplicate Complaint Description."_s
                                : u"Duplicate Dosage Comment [Remark]."_s);
        return 0;
    }
    const qint64 code = db.scalar(u"SELECT IFNULL(MAX(Code), 0) + 1 FROM %1"_s.arg(table)).toLongLong();
    if (db.execute(u"INSERT INTO %1 (Code, Name) VALUES (?, ?)"_s.arg(table), {code, name}) < 0)
        return 0;
    return code;
}

} // namespace vantrel
