#pragma once

#include "model/SiteLists.h"

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

class QPushButton;
class QStackedLayout;
class QTableView;

namespace wendmark {

class BookmarkModel;
class Gate;
class NotePanel;
class QtDesktop;
class TourDocument;

/// The bookmarks of the tour, with a note and a colour each. They are read from and written to "goodlist.txt"
/// of the working copy; in between they live in the panel only. What the author does here waits while a
/// command has the files in its hands; beside a frame test it is done at once. Rows count from 0.
class BookmarkPanel final : public QWidget {
    Q_OBJECT

public:
    /// The references must outlive the panel.
    BookmarkPanel(TourDocument& document, Gate& gate, QtDesktop& desktop, QWidget* parent = nullptr);

    /// The panel's own buttons besides those of the list stand in its first row; more can join them.
    void addButton(QPushButton& button);

    void LoadGoodList();

    /// A note that is being written is taken along.
    void SaveGoodList();

    /// What the panel holds, without a note that is being written.
    const BookmarkList& list() const;

    /// Replaces all of it, as LoadGoodList() does; a note that is being written is given up.
    void setList(BookmarkList list);

    std::int16_t bookmarkCount() const;

    /// `row` must be there.
    const Bookmark& GetRow(int row) const;

    /// Adds rows as far as they are needed; see BookmarkModel::SetRow().
    void SetRow(int row, const Bookmark& bookmark);

    /// Rows and columns are included; with a row below 0 nothing is selected.
    void SelectCells(int firstRow, int firstColumn, int lastRow, int lastColumn);

    /// Adds a page, or selects its entry if it has one.
    void remember(const QString& address);

    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

signals:
    /// The author has changed the list, once for each action, which `what` names: "Remove Bookmark". What
    /// leaves the list as it was is no change.
    void changed(const QString& what);

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

    void give(std::function<void()> command);
    void setupGrid();
    QWidget* makeList();
    void showLastRows();
    void layOutColumns();
    std::optional<Block> selectedBlock() const;
    std::optional<int> selectedRow() const;
    std::optional<Block> blockOrBeep();
    std::optional<int> rowOrBeep();
    void selectRows(int first, int last);
    void showRow(int row);
    void noteChange();
    void tellChange(const QString& what);

    void goTo();
    void editNotes();
    void storeNote();
    void backToBookmarks();
    void removeBlock();
    void moveBlock(int by);
    void colourBlock(int k);

    TourDocument& m_document;
    Gate& m_gate;
    QtDesktop& m_desktop;
    BookmarkModel* m_list;
    QTableView* m_grid;      ///< grdResearch
    QStackedLayout* m_pages; ///< The list, or picNote over it.
    NotePanel* m_note;
    QLayout* m_buttons = nullptr;
    int m_notedRow = -1; ///< Whose note is being edited.
    bool m_shownBefore = false;
    bool m_columnsLaidOut = false;
};

} // namespace wendmark
