#pragma once

#include <QWidget>
#include <cstdint>

namespace wendmark {

/// A ring of dots, one of which leads the others round while a page is being loaded. Its accessible name says
/// which it is, and its size follows the text.
class LoadingIndicator final : public QWidget {
    Q_OBJECT

public:
    static constexpr std::int16_t frameCount = 8;

    explicit LoadingIndicator(QWidget* parent = nullptr);

    /// Moves on by one tick of the timer: rests on frame 1 unless `busy`.
    void tick(bool busy);

    /// Frame on show, 1 to 8.
    std::int16_t shownFrame() const { return m_shownFrame; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Turning;

    void fitText();
    void showBusy(bool busy);
    void showTurning(bool turning);
    void show(std::int16_t frame);

    std::int16_t m_busyFrame = 0; ///< Next frame while busy; 0 before the first tick.
    std::int16_t m_shownFrame = 1;
    bool m_busy = false;          ///< As told by the last tick.
    Turning* m_turning = nullptr; ///< Where windows inside windows cost little, from the first load on.
    QWidget* m_place = nullptr;   ///< Of that.
};

} // namespace wendmark
