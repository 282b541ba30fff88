#pragma once

#include <QLineEdit>

class QStringListModel;

namespace wendmark {

class TourDocument;

/// A field for the address of a page. It offers the addresses that were visited in the site editor and have
/// in them what is typed.
class AddressField final : public QLineEdit {
public:
    /// The document must outlive the field.
    AddressField(const TourDocument& document, QWidget* parent);

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    void loadVisited();

    const TourDocument& m_document;
    QStringListModel* m_visited;
};

} // namespace wendmark
