#pragma once

#include <QWidget>
#include <cstdint>

namespace wendmark {

/// A moon that waxes and wanes while a page is being loaded, and rests otherwise.
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

private:
    void show(std::int16_t frame);

    std::int16_t m_busyFrame = 0; ///< Next frame while busy; 0 before the first tick.
    std::int16_t m_shownFrame = 1;
};

} // namespace wendmark
