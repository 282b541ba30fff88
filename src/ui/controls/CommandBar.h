#pragma once

#include <QString>
#include <QWidget>

class QAction;

namespace wendmark {

class FlowLayout;

/// A toolbar whose buttons are told apart by keys. It wraps onto further rows as the window narrows.
class CommandBar final : public QWidget {
    Q_OBJECT

public:
    explicit CommandBar(QWidget* parent = nullptr);

    /// A button that looks and is enabled like `action`, which must outlive it, but is routed by its key.
    void addButton(const QString& key, const QString& toolTip, const QAction& action);

    /// The button with this key, which must be there, shows what it does in words, too.
    void showText(const QString& key);

    /// A place for a control, which moves onto it. A click on the place itself does nothing.
    void addPlaceholder(const QString& key, QWidget* control);

    void addGap();

signals:
    void buttonClicked(const QString& key);

private:
    FlowLayout* m_layout;
};

} // namespace wendmark
