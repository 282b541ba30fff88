#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <random>

class QFileDialog;
class QWidget;
class QWindow;

namespace wendmark {
class Gate;
}

namespace wendmark::test {

/// Hands that press keys, click, close and activate windows of this process at random, a few milliseconds
/// apart, also while a dialog is open or a command waits. Input goes through the windows as the system's
/// does: what a modal dialog keeps from the author is kept from the hands. A process that crashes or aborts
/// prints their last events. One at a time.
class RandomHands final : public QObject {
    Q_OBJECT

public:
    explicit RandomHands(unsigned seed);
    ~RandomHands() override;

    /// Whose waits keep keys and clicks back; null between two runs of the program.
    void setGate(const Gate* gate) { m_gate = gate; }

    /// Folders that are selected in folder dialogs, and files that are chosen in file dialogs.
    void setFolders(const QStringList& folders) { m_folders = folders; }
    void setFiles(const QStringList& files) { m_files = files; }

    /// Called before each event.
    std::function<void()> beforeEvent;

    /// Gives this many events from now on.
    void play(int events) { m_left = events; }
    void stop() { m_left = 0; }
    bool isPlaying() const { return m_left > 0; }

    /// Whether no event is being handled any more: the dialogs that they opened are closed.
    bool isIdle() const { return m_depth == 0; }

    /// How many popups and dialogs were closed because the hands had no event left; they stay idle only
    /// where nothing asks.
    int dismissed() const { return m_dismissed; }

    /// The last events, oldest first.
    static void printLast();

    /// 0 to below `limit`.
    int pick(int limit) {
        return limit < 1 ? 0 : static_cast<int>(m_random() % static_cast<unsigned>(limit));
    }

private:
    void tick();
    bool dismiss();
    void act();
    void actOnPopup(QWidget& popup);
    void actOnWindow(QWidget& window);
    void answerFileDialog(QFileDialog& dialog);
    void pressShortcut(QWidget& window);
    void pressKey(QWidget& window);
    void type(QWidget& window);
    void click(QWidget& window);
    void chooseMenuItem(QWidget& window);
    void closeWindow(QWidget& window);
    void activate();
    void selectFolder(QWidget& window);
    void sendKey(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers);
    QWidget* target();
    void note(const QString& event);

    std::mt19937 m_random;
    const Gate* m_gate = nullptr;
    QStringList m_folders;
    QStringList m_files;
    int m_left = 0;
    int m_dismissed = 0;
    int m_depth = 0; ///< Events that are being handled, one inside the other.
};

} // namespace wendmark::test
