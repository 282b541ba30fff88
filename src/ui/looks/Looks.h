#pragma once

#include <QObject>

namespace wendmark {

class DarkWish;

/// Whether the desktop brings looks for programs like this one: a style of its own, or colours for the
/// toolkit's. Ask before anything sets them.
bool desktopBringsLooks();

/// Gives all windows the program's own looks: style, colours and type.
void applyLooks(bool dark);

/// The program's own looks where the desktop brings none, light or dark as the author wants it, also when
/// that changes. Does nothing where it does.
class Looks final : public QObject {
    Q_OBJECT

public:
    explicit Looks(QObject* parent = nullptr);

private:
    DarkWish* m_wish = nullptr;
};

} // namespace wendmark
