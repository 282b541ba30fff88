#include "ui/site/HistoryModel.h"

namespace wendmark {

bool isTestPage(const QString& address) {
    return address.startsWith(QLatin1String("file:")) && address.endsWith(QLatin1String("/ft.htm"));
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
    const bool tells =
        role == Qt::AccessibleTextRole || role == Qt::AccessibleDescriptionRole || role == Qt::ToolTipRole;
    if (!tells)
        return QStringListModel::data(index, role);
    const QString address = QStringListModel::data(index, Qt::DisplayRole).toString();
    if (isTestPage(address))
        return tr("The frame test's own page: leads to the page that was tested last");
    return role == Qt::AccessibleTextRole ? QVariant(address) : QVariant();
}

} // namespace wendmark
