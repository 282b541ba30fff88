#pragma once

#include "commands/StopListCommands.h"
#include "commands/StopLook.h"

#include <QAbstractTableModel>
#include <string>
#include <vector>

namespace wendmark {

class StopCheck;
class TourDocument;

/// Names the folder of the pages among what a clipboard or a drag holds of stops: the working copy of the
/// program that they come from.
inline constexpr char stopsFolderType[] = "application/x-wendmark-folder";

/// The tour as a list: row 0 is the opening page, row n is stop n. What the author does to it goes through
/// the document; the model only shows what has become of it.
class StopListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { numberColumn, titleColumn, pageColumn, remarkColumn, columnCountOfAll };

    /// Both must outlive the model.
    StopListModel(const TourDocument& document, const StopCheck& check, QObject* parent = nullptr);

    /// Shows the document as it is now: rows that are others, have come or have gone, each in one update.
    void refresh();

    /// What a clipboard or a drag takes of these stops, which must be held: the own form, HTML and plain
    /// text.
    QMimeData* dataOf(const StopNumbers& stops) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction | Qt::CopyAction; }

    /// Tells by dropped() alone; always false, so that the view takes nothing away itself.
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

signals:
    /// Something was dropped behind stop `position`, 0 being the opening page.
    void dropped(const QMimeData& data, int position);

private:
    struct Row {
        StopLook look;
        bool untested = false; ///< Nobody has tried whether its page can be shown in a frame.
        QString found;         ///< What a check has found to be wrong with its page; empty: nothing.
        QString why;           ///< Same, a sentence.

        friend bool operator==(const Row&, const Row&) = default;
    };

    std::vector<Row> rowsNow() const;
    QString text(int row, int column) const;
    static QString remarksOn(const Row& row);

    QString findingOf(const QModelIndex& index) const;

    const TourDocument& m_document;
    const StopCheck& m_check;
    std::string m_tourTitle;
    std::vector<Row> m_stops;
};

/// The stops of these rows, without the opening page, each once and in their order.
StopNumbers stopsOf(const QModelIndexList& indexes);

} // namespace wendmark
