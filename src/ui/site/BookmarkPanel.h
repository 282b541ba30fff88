#pragma once

#include "model/SiteLists.h"

#include <QWidget>
#include <optional>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QStackedLayout;
class QTableWidget;

namespace wendmark {

class QtDesktop;
struct TourContext;

/// The bookmarks of the tour, with a note and a colour each. They are read from and written to "goodlist.txt"
/// of the working copy; in between they live in the grid only. Rows count from 0.
class BookmarkPanel final : public QWidget {
    Q_OBJECT

public:
    /// The references must outlive the panel.
    BookmarkPanel(TourContext& tour, QtDesktop& desktop, QWidget* parent = nullptr);

    /// The panel's own buttons besides those of the list stand in its first row; more can join them.
    void addButton(QPushButton& button);

    void LoadGoodList();

    /// A note that is being written is taken along.
    void SaveGoodList();

    std::int16_t bookmarkCount() const;

    Bookmark GetRow(int row) const;

    /// Adds rows as far as they are needed.
    void SetRow(int row, const Bookmark& bookmark);

    /// Rows and columns are included; with a row below 0 nothing is selected.
    void SelectCells(int firstRow, int firstColumn, int lastRow, int lastColumn);

    /// Adds a page, or selects its entry if it has one.
    void remember(const QString& address);

    QSize minimumSizeHint() const override;

signals:
    /// The author wants to see the page of an entry.
    void pageWanted(const QString& address);

    /// Asks for the address of the page shown, to answer by remember().
    void rememberWanted();

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Selected rows, both included.
    struct Block {
        int first;
        int last;
    };

    void setupGrid();
    QWidget* makeList();
    QWidget* makeNotesPanel();
    void setupConnections();
    void showLastRows();
    void setColour(int row, Colour colour);
    void layOutColumns();
    std::optional<Block> selectedBlock() const;
    std::optional<int> selectedRow() const;
    std::optional<Block> blockOrBeep();
    std::optional<int> rowOrBeep();
    void showRow(int row);
    void noteChange();

    void goTo();
    void editNotes();
    void storeNote();
    void backToBookmarks();
    void removeBlock();
    void moveBlock(int by);
    void colourBlock(int k);

    TourContext& m_tour;
    QtDesktop& m_desktop;
    QTableWidget* m_grid;    ///< grdResearch
    QStackedLayout* m_pages; ///< The list, or picNote over it.
    QLayout* m_buttons = nullptr;
    QLabel* m_noteTitle = nullptr;
    QLineEdit* m_note = nullptr;
    int m_notedRow = -1;   ///< Whose note is being edited.
    std::string m_further; ///< What the file held beyond the grid: written again as it was.
    bool m_shownBefore = false;
    bool m_columnsLaidOut = false;
};

} // namespace wendmark
