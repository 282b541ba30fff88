#pragma once

#include <QStringListModel>

namespace wendmark {

/// Whether this is the address of the frame test's page, in whatever folder.
bool isTestPage(const QString& address);

/// The addresses of the address box, the latest first. Unlike the usual model of a box it takes millions of
/// lines at once. Of the frame test's page, whose address tells nobody anything, it says what it is.
class HistoryModel final : public QStringListModel {
    Q_OBJECT

public:
    using QStringListModel::QStringListModel;

    /// What lists show, and assistive tools read, is told by the role for these; the address itself by those
    /// for display and editing.
    QVariant data(const QModelIndex& index, int role) const override;
};

} // namespace wendmark
