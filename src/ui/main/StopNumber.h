#pragma once

#include <QFrame>
#include <cstdint>

class QLabel;

namespace wendmark {

/// The stop on screen, "Stop 3 of 10": the panel picStopNum with the label lblStopNum, which holds the number
/// alone. The label's accessible name says all of it.
class StopNumber final : public QFrame {
    Q_OBJECT

public:
    explicit StopNumber(QWidget* parent = nullptr);

    /// What a page has announced; nothing, or nothing above 0, is the opening page.
    void showStop(const QString& text);

    /// How many stops there are.
    void showCount(std::int16_t count);

    /// Whether another page than that of the number is on its way.
    void showLoading(bool loading);

protected:
    void changeEvent(QEvent* event) override;

private:
    void tellAll();
    void reserveWidth();

    QLabel* m_before; ///< What stands before the number.
    QLabel* m_number; ///< lblStopNum
    QLabel* m_behind; ///< What stands behind the number.
    std::int16_t m_count = 0;
    bool m_loading = false;
};

} // namespace wendmark
