#include "commands/DocumentListeners.h"

#include <algorithm>

namespace wendmark {

void DocumentListeners::tellChange() const {
    tell([](DocumentListener& listener) {
        listener.tourChangedNow();
        listener.filesChanged();
    });
}

void DocumentListeners::tellPlace() const {
    tell([](DocumentListener& listener) { listener.currentStopChanged(); });
}

void DocumentListeners::tellSave(bool complete) const {
    tell([complete](DocumentListener& listener) { listener.tourSaved(complete); });
}

void DocumentListeners::tellStopContent(std::int16_t stop) const {
    tell([stop](DocumentListener& listener) { listener.stopContentChanged(stop); });
}

template <typename Tell>
void DocumentListeners::tell(Tell tell) const {
    for (DocumentListener* const listener : std::vector(m_listeners)) {
        const bool stillListens =
            std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end();
        if (stillListens)
            tell(*listener);
    }
}

} // namespace wendmark
