#pragma once

#include <QDateTime>

namespace vantrel {

// "Today" and "now" of the process. Tests and scenarios fix it; the program reads the system clock.
class Clock {
public:
    QDateTime now() const { return m_fixed.isValid() ? m_fixed : QDateTime::currentDateTime(); }
    QDate today() const { return now().date(); }
    void fix(const QDateTime& at) { m_fixed = at; }
    bool isFixed() const { return m_fixed.isValid(); }
    void advance(int seconds) {
        if (m_fixed.isValid())
            m_fixed = m_fixed.addSecs(seconds);
    }

private:
    QDateTime m_fixed;
};

} // namespace vantrel
