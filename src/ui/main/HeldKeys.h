#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

class QEvent;
class QWidget;

namespace wendmark {

class Gate;

/// Keeps what is typed into a window while a command waits for its turn that leads the author to another
/// field, and gives it there.
class HeldKeys final : public QObject {
    Q_OBJECT

public:
    /// Both must outlive it.
    HeldKeys(Gate& gate, QWidget& window);
    ~HeldKeys() override;

    /// To be called when a command was given to the gate: unless that has ended already, keys wait for it, or
    /// for the author's next click. `hasArrived` tells then whether the field is there; what was typed is
    /// dropped otherwise.
    void holdForLast(std::function<bool()> hasArrived);

signals:
    /// What was typed is where it belongs, and more that has to be done before the next command can be done.
    void given();

    /// What was typed is left out.
    void dropped();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Keys = std::vector<std::unique_ptr<QEvent>>;

    bool isForWindow(const QObject& watched) const;
    void stopHolding();
    void give(const Keys& keys);

    Gate& m_gate;
    QWidget& m_window;
    std::shared_ptr<Keys> m_held; ///< None while keys are not held.
    bool m_giving = false;
};

} // namespace wendmark
