#pragma once

#include <QDialog>

namespace wendmark {

/// What the program shows while it starts. Closes after six seconds, or at a click or a key.
class frmSplash final : public QDialog {
    Q_OBJECT

public:
    static constexpr int shownFor = 6000; ///< Milliseconds.

    explicit frmSplash(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

} // namespace wendmark
