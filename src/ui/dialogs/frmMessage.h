#pragma once

#include <QDialog>

class QHBoxLayout;

namespace wendmark {

/// A message in a window of its own, for texts of several lines. Shown with runDialog().
class frmMessage final : public QDialog {
    Q_OBJECT

public:
    /// The text is plain; its lines are separated by line breaks.
    frmMessage(const QString& caption, const QString& text, QWidget* parent = nullptr);

    /// Says below the text why it is so. Nothing for no reason.
    void addReason(const QString& reason);

    /// Adds a button that does something about it, and ends the message like "OK".
    void addOffer(const QString& text, const QString& toolTip);

    /// Whether the message was ended by that button.
    bool isOfferTaken() const { return m_isOfferTaken; }

private:
    QHBoxLayout* m_buttons;
    bool m_isOfferTaken = false;
};

} // namespace wendmark
