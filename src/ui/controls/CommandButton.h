#pragma once

#include <QToolButton>

class QAction;

namespace wendmark {

/// A button of a toolbar that looks and is enabled like a command, and whose tool tip names the command's
/// keys behind its own text. Its icon grows with the text.
class CommandButton final : public QToolButton {
    Q_OBJECT

public:
    /// `action` must outlive the button.
    CommandButton(const QString& toolTip, const QAction& action, QWidget* parent);

    /// From now on its text stands beside the icon: the button is what its window is for.
    void showText(const QString& text);

protected:
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void fitIcon();
    QString toolTipWithKeys() const;

    const QAction& m_action;
};

} // namespace wendmark
