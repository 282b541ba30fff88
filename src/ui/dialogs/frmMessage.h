#pragma once

#include <QDialog>

namespace wendmark {

/// A message in a window of its own, for texts of several lines. Shown with runDialog().
class frmMessage final : public QDialog {
    Q_OBJECT

public:
    /// The text is plain; its lines are separated by line breaks.
    frmMessage(const QString& caption, const QString& text, QWidget* parent = nullptr);

    /// Says below the text why it is so. Nothing for no reason.
    void addReason(const QString& reason);
};

} // namespace wendmark
