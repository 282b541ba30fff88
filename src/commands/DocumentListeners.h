#pragma once

#include "commands/DocumentListener.h"

#include <cstdint>
#include <vector>

namespace wendmark {

/// All who want to be told of a tour. A listener may come or go while it is told something.
class DocumentListeners final {
public:
    /// The listener must be taken out before it goes.
    void add(DocumentListener& listener) { m_listeners.push_back(&listener); }
    void remove(DocumentListener& listener) { std::erase(m_listeners, &listener); }

    void tellChange() const;
    void tellPlace() const;
    void tellSave(bool complete) const;
    void tellStopContent(std::int16_t stop) const;

private:
    template <typename Tell>
    void tell(Tell tell) const;

    std::vector<DocumentListener*> m_listeners;
};

} // namespace wendmark
