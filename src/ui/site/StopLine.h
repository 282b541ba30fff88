#pragma once

#include "commands/DocumentListener.h"

#include <QObject>
#include <string>

class QWidget;

namespace wendmark {

class ElidedLabel;
class TourDocument;

/// Says which stop "Use this Site" is for, and whether it has done its work.
class StopLine final : public QObject, private DocumentListener {
    Q_OBJECT

public:
    /// The document must outlive it; the line is part of `window`.
    StopLine(TourDocument& document, QWidget* window);
    ~StopLine() override;

    /// lblStop
    ElidedLabel* label() const { return m_label; }

    /// The browser shows the page at this location.
    void showPage(const QString& location);

    /// "Use this Site" has stored the page that is shown into this stop.
    void tellStored(int stop);

private:
    void tell();
    void tourChangedNow() override { tell(); }
    void currentStopChanged() override { tell(); }

    TourDocument& m_document;
    ElidedLabel* m_label;
    std::string m_page;   ///< As a stop stores it.
    std::string m_stored; ///< Same, the last that was.
    int m_storedInto = 0; ///< Stop.
};

} // namespace wendmark
