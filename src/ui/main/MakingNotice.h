#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>

namespace wendmark {

class Gate;
class QtDesktop;
class TourDocument;

/// A small window that says which tour's pages are being made, while that takes long and no other window of
/// the program is on screen. It comes and goes by itself.
class MakingNotice final : public QWidget {
    Q_OBJECT

public:
    /// All must outlive it.
    MakingNotice(const TourDocument& document, const Gate& gate, const QtDesktop& desktop);

private:
    void tell();
    void leave();

    const TourDocument& m_document;
    const Gate& m_gate;
    QLabel* m_text; ///< lblMaking
    QTimer m_look;
};

} // namespace wendmark
