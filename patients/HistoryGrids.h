#pragma once

#include <QString>
#include <QStringList>

namespace vantrel {

class Screen;

// The four history lists of a patient (allergies, personal habits, past and family history), edited in
// their staging tables with their pick lists and rules. The prescription screen stages them in TmpPres...,
// the patient master in TmpPatient...; both show the same grids with the same messages.
class HistoryGrids {
public:
    // Adds the grids and their drop-downs to the screen, each on its page of the tab strip (pages 1 to 4),
    // bound to the staging tables named with the prefix ("TmpPres" or "TmpPatient").
    HistoryGrids(Screen& screen, const QString& stagingPrefix, const QString& tabStrip);

    // Fills the pick lists from the masters.
    void fillLists();
    // Reads the staging tables again.
    void reload();
    // The grids take changes only while the record is being edited.
    void setEditable(bool on);

    static QStringList gridNames();

private:
    bool columnLeave(int list, int column);
    bool commit(int list);
    bool listColumnLeave(int list, int column);

    Screen& m_screen;
    QString m_prefix;
};

} // namespace vantrel
