#pragma once

#include "commands/DocumentListener.h"
#include "commands/StopReplace.h"
#include "model/TourSearch.h"
#include "platform/SettingsStore.h"
#include "ui/ProgramParts.h"

#include <QDialog>
#include <QTimer>
#include <cstdint>
#include <functional>

class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;

namespace wendmark {

class PlaceModel;
class RowTable;

/// Finds words in all stops, goes to where they stand, and replaces them. Not modal: the places follow what
/// becomes of the tour. Each command goes through the gate; replacing is one step of the history.
class frmFind final : public QDialog, private DocumentListener {
    Q_OBJECT

public:
    /// Tells the stop whose words stand in another window and would be stored from there; 0: none.
    using OpenStop = std::function<std::int16_t()>;

    /// What `parts` refers to must outlive the window.
    frmFind(ProgramParts parts, OpenStop openStop, QWidget* parent = nullptr);
    ~frmFind() override;

    /// Comes to the front and asks for the words.
    void ask();

    /// Goes to the next place, also while the window is closed. Without words to look for it asks for them.
    void findNext();

private:
    void setupFields();
    void setupOption(QCheckBox& box, const char* name, const Setting<bool>& setting);
    void setupTable();
    void setupShortcuts();
    QLayout* makeFieldRows();
    QLayout* makeOptionRow();
    QLayout* makeButtonRow();

    TourQuery query() const;
    void showPlaces();
    void showCount(const FoundPlaces& found);
    int currentRow() const;
    int nextRow() const;
    void goTo(int row);
    void go();
    bool refuseWithoutPlaces();

    void replace();
    void replaceAll();
    void replaceAt(int row);
    void sayReplaced(const WordReplacementResult& result, std::int16_t spared);

    void tourChangedNow() override;

    ProgramParts m_parts;
    OpenStop m_openStop;
    PlaceModel* m_places;
    TourQuery m_shown;    ///< What the places were found with.
    QLineEdit* m_words;   ///< txtFind
    QLineEdit* m_by;      ///< txtReplace
    QCheckBox* m_case;    ///< chkMatchCase
    QCheckBox* m_whole;   ///< chkWholeWords
    QCheckBox* m_address; ///< chkAddresses
    RowTable* m_table;    ///< grdPlaces
    QLabel* m_count;      ///< lblFound
    QLabel* m_notice;     ///< lblNotice: what has come of the last command.
    QTimer m_changes;     ///< Runs while the list has not caught up with tour and fields.
};

} // namespace wendmark
