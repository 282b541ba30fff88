#pragma once

#include <cstdint>

namespace wendmark {

/// Is told what happens to a tour, once a command has done it. All of it may come several times for one
/// command, and a listener may ask the document whatever it likes, but must not change the tour.
class DocumentListener {
public:
    virtual ~DocumentListener() = default;

    /// Texts, stops, properties or bookmarks are others, or it is another tour.
    virtual void tourChangedNow() {}

    /// Title, page or words of this stop are others, by typing, and its pages are made; the main browser
    /// still shows what it showed. tourChangedNow() follows.
    virtual void stopContentChanged(std::int16_t stop) { static_cast<void>(stop); }

    /// Another stop is on screen, or the opening page.
    virtual void currentStopChanged() {}

    /// The tour was saved; not `complete`: something of it was not.
    virtual void tourSaved(bool complete) { static_cast<void>(complete); }

    /// Files of the working copy are others.
    virtual void filesChanged() {}
};

} // namespace wendmark
