#include "prescription/NewBrand.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

qint64 FindByName(Database& db, const QString& table, const QString& word) {
    return db.scalar(u"SELECT Code FROM %1 WHERE UPPER(TRIM(Name)) = ?"_s.arg(table), {word}).toLongLong();
}

} // namespace

qint64 EnsureSentinel(Database& db, const QString& table, const QString& word, const QString& groupCode,
                      qint64 group) {
    if (const qint64 code = FindByName(db, table, word); code > 0)
        return code;
    const bool grouped = !groupCode.isEmpty();
    const QString sql = grouped ? u"INSERT INTO %1 (Name, %2) VALUES (?, ?)"_s.arg(table, groupCode)
                                : u"INSERT INTO %1 (Name) VALUES (?)"_s.arg(table);
    if (db.execute(sql, grouped ? QVariantList{word, group} : QVariantList{word}) < 0)
        return 0;
    return db.lastInsertId();
}

qint64 EnsureNoneDrug(Database& db) {
    const QString none = u"NONE"_s;
    if (const qint64 code = FindByName(db, u"PharmaName"_s, none); code > 0)
        return code;
    const qint64 indication = EnsureSentinel(db, u"Indication"_s, none);
    const qint64 contra = EnsureSentinel(db, u"ContraIndication"_s, none);
    const qint64 side = EnsureSentinel(db, u"SideEffect"_s, none);
    const qint64 special = EnsureSentinel(db, u"SpecialCare"_s, none);
    const qint64 safe = FindByName(db, u"SafetyStatus"_s, u"SAFE"_s);
    if (indication <= 0 || contra <= 0 || side <= 0 || special <= 0 || safe <= 0)
        return 0;
    Transaction tx(db);
    bool ok = tx.active() && db.execute(u"INSERT INTO PharmaName (Name, ModeAction, Dose, CrossReaction) "
                                        "VALUES (?, ?, ?, ?)"_s,
                                        {none, none, none, none}) >= 0;
    const qint64 drug = ok ? db.lastInsertId() : 0;
    ok = ok && db.execute(u"INSERT INTO PharmaContra (PharmaCode, ContraIndicationCode) VALUES (?, ?)"_s,
                          {drug, contra}) >= 0;
    ok = ok && db.execute(u"INSERT INTO PharmaIndication (PharmaCode, IndicationCode) VALUES (?, ?)"_s,
                          {drug, indication}) >= 0;
    ok = ok && db.execute(u"INSERT INTO PharmaSide (PharmaCode, SideEffectCode) VALUES (?, ?)"_s,
                          {drug, side}) >= 0;
    ok = ok && db.execute(u"INSERT INTO PharmaSpecial (PharmaCode, SpecialCode) VALUES (?, ?)"_s,
                          {drug, special}) >= 0;
    // Safe in every state, so that the brand reads as safe and not as unknown.
    for (int field = 1; field <= 7 && ok; ++field)
        ok = db.execute(u"INSERT INTO DrugSafety (PharmaCode, SafeFieldCode, SafetyCode, Remark) "
                        "VALUES (?, ?, ?, '')"_s,
                        {drug, field, safe}) >= 0;
    return ok && tx.commit() ? drug : 0;
}

qint64 AddNewBrand(Database& db, const NewBrand& brand) {
    const QString name = brand.name.trimmed().toUpper();
    Transaction tx(db);
    if (!tx.active())
        return 0;
    if (const qint64 existing = FindByName(db, u"GenericName"_s, name); existing > 0)
        return existing;
    const qint64 code = db.scalar(u"SELECT IFNULL(MAX(Code), 0) + 1 FROM GenericName"_s).toLongLong();
    bool ok =
        db.execute(u"INSERT INTO GenericName (Code, Name, Composition, Dosage, Company) "
                   "VALUES (?, ?, ?, ?, ?)"_s,
                   {code, name, brand.composition.trimmed(), brand.dosage.trimmed(), brand.company}) >= 0;
    for (qint64 form : brand.forms)
        ok =
            ok && db.execute(u"INSERT INTO GenericDsgFm (GenericCode, DsgFmCode, Remark) VALUES (?, ?, '')"_s,
                             {code, form}) >= 0;
    ok = ok && db.execute(u"INSERT INTO GenericGroup (GenericCode, GroupCode) VALUES (?, ?)"_s,
                          {code, brand.group}) >= 0;
    ok = ok && db.execute(u"INSERT INTO GenericPharma (GenericCode, PharmaCode) VALUES (?, ?)"_s,
                          {code, brand.drug}) >= 0;
    ok = ok && db.execute(u"INSERT INTO GenericSubGroup (GenericCode, SubGroupCode) VALUES (?, ?)"_s,
                          {code, brand.subGroup}) >= 0;
    return ok && tx.commit() ? code : 0;
}

} // namespace vantrel
