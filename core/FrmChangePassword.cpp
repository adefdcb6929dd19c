#include "core/KeyFilters.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"

#include <map>

using namespace Qt::StringLiterals;

namespace vantrel {

// Changes one of the three passwords, or verifies the control password before the protected tabs of the
// parameter screen open. The opener hands inputs["PasswordAction"]: "L" login, "C" control,
// "A" administrative, "V" verify; a verified access comes back as outputs["ControlAccess"] = true.
class FrmChangePassword : public Screen {
public:
    explicit FrmChangePassword(Process& owner) : Screen(owner, u"FrmChangePassword"_s) {
        colourFamily = u"Utility"_s;
        add<Label>(u"LblPrompt"_s);
        const QStringList captions = {u"Old Password"_s, u"New Password"_s, u"Confirm Password"_s,
                                      u"Access Code"_s};
        int i = 0;
        for (const QString& name : {u"Txt_Old"_s, u"Txt_New"_s, u"Txt_Confirm"_s, u"Txt_Password"_s}) {
            add<Label>(u"Lbl"_s + name).setCaption(captions[i++]);
            auto& box = add<TextBox>(name);
            box.keyFilter = [](int key, const QString&, int) { return KeyAlphanumeric(key); };
        }
        auto& ok = add<Button>(u"Cmd_Ok"_s);
        ok.setCaption(u"&Ok"_s);
        ok.onClick = [this] { Ok(); };
        auto& cancel = add<Button>(u"Cmd_Undo"_s);
        cancel.setCaption(u"&Cancel"_s);
        cancel.setCausesValidation(false);
        cancel.onClick = [this] { close(); };
    }

    void load() override {
        m_action = inputs.value(u"PasswordAction"_s).toString().toUpper();
        static const std::map<QString, std::pair<QString, QString>> changes = {
            {u"L"_s, {u"Change Clinic User Password"_s, u"Password"_s}},
            {u"C"_s, {u"Change Control Password"_s, u"ControlPassword"_s}},
            {u"A"_s, {u"Change Administrative Password"_s, u"HOpt"_s}},
        };
        const bool verify = m_action == u"V"_s;
        if (verify) {
            setCaption(u"Verifing Control Parameters Access"_s);
            control(u"LblPrompt"_s)->setCaption(u"Enter Your Access Code for Control Master"_s);
        } else if (const auto it = changes.find(m_action); it != changes.end()) {
            setCaption(it->second.first);
            m_column = it->second.second;
        }
        control(u"LblPrompt"_s)->setVisible(verify);
        for (const QString& name : {u"Txt_Old"_s, u"Txt_New"_s, u"Txt_Confirm"_s, u"Txt_Password"_s}) {
            const bool shown = verify == (name == u"Txt_Password"_s);
            control(name)->setVisible(shown);
            control(u"Lbl"_s + name)->setVisible(shown);
        }
        setFocus(verify ? u"Txt_Password"_s : u"Txt_Old"_s);
    }

private:
    QString text(const QString& name) const { return static_cast<TextBox*>(control(name))->text().trimmed(); }

    void Ok() {
        ClinicParameters& p = state().Params;
        if (m_action == u"V"_s) {
            if (text(u"Txt_Password"_s) != p.text(u"ControlPassword"_s)) {
                prompter().stop(u"Invalid Control Access Password"_s);
                setFocus(u"Txt_Password"_s);
                return;
            }
            outputs.insert(u"ControlAccess"_s, true);
            close();
            return;
        }
        if (m_column.isEmpty())
            return;
        static const std::map<QString, QString> invalid = {
            {u"Password"_s, u"Invalid Old Clinic User Password"_s},
            {u"ControlPassword"_s, u"Invalid Old Control Password"_s},
            {u"HOpt"_s, u"Invalid Old Administrative Password"_s},
        };
        if (text(u"Txt_Old"_s) != p.text(m_column)) {
            prompter().stop(invalid.at(m_column));
            setFocus(u"Txt_Old"_s);
            return;
        }
        const QString password = text(u"Txt_New"_s);
        if (password != text(u"Txt_Confirm"_s)) {
            prompter().stop(u"Wrong Password Entered for Confirmation"_s);
            setFocus(u"Txt_Confirm"_s);
            return;
        }
        if (db().execute(u"UPDATE Control SET %1 = ?"_s.arg(m_column),
                         {ClinicParameters::reversed(password)}) < 0) {
            prompter().stop(db().lastError());
            return;
        }
        p.set(m_column, password);
        prompter().info(u"Password Has Been Changed"_s);
        close();
    }

    QString m_action;
    QString m_column;
};

VANTREL_SCREEN(FrmChangePassword);

} // namespace vantrel
