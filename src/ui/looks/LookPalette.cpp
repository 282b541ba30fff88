#include "ui/looks/LookPalette.h"

namespace wendmark {

namespace {

struct Colours {
    QRgb window;
    QRgb base;
    QRgb otherRow;
    QRgb button;
    QRgb text;
    QRgb quietText; ///< Of what is not there yet, or cannot be used.
    QRgb outline;   ///< Around what can be operated.
    QRgb hairline;  ///< Between parts.
    QRgb link;
    QRgb visitedLink;
};

constexpr Colours light = {0xfff6f5f1, 0xffffffff, 0xfffaf9f5, 0xfffdfcfa, 0xff1b2529,
                           0xff5f6b6f, 0xff828b8d, 0xffdad7cd, 0xff12627a, 0xff6a4b7f};
constexpr Colours dark = {0xff20272a, 0xff171d1f, 0xff1c2326, 0xff2c363a, 0xffe6eae9,
                          0xff9aa5a8, 0xff76848a, 0xff3a454a, 0xff86cde0, 0xffc9a9dc};

QColor mixed(const QColor& one, const QColor& other) {
    return QColor::fromRgbF((one.redF() + other.redF()) / 2, (one.greenF() + other.greenF()) / 2,
                            (one.blueF() + other.blueF()) / 2);
}

void setQuiet(QPalette& palette, const Colours& colours) {
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(colours.quietText));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(colours.outline));
    palette.setColor(QPalette::Disabled, QPalette::Button, QColor(colours.window));
}

} // namespace

QColor accentColour(bool isDark) {
    return isDark ? QColor(0x2f, 0x7b, 0x96) : QColor(0x1f, 0x4e, 0x5f);
}

QPalette lookPalette(bool isDark) {
    const Colours& colours = isDark ? dark : light;
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(colours.window));
    palette.setColor(QPalette::Base, QColor(colours.base));
    palette.setColor(QPalette::AlternateBase, QColor(colours.otherRow));
    palette.setColor(QPalette::Button, QColor(colours.button));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, QColor(colours.text));
    palette.setColor(QPalette::PlaceholderText, QColor(colours.quietText));
    palette.setColor(QPalette::ToolTipBase, QColor(colours.base));
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Light, QColor(colours.base));
    palette.setColor(QPalette::Midlight, QColor(colours.hairline));
    palette.setColor(QPalette::Mid, QColor(colours.outline));
    palette.setColor(QPalette::Dark, mixed(QColor(colours.outline), QColor(colours.text)));
    palette.setColor(QPalette::Shadow, Qt::black);
    palette.setColor(QPalette::Highlight, accentColour(isDark));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(colours.link));
    palette.setColor(QPalette::LinkVisited, QColor(colours.visitedLink));
    setQuiet(palette, colours);
    return palette;
}

} // namespace wendmark
