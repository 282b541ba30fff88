#pragma once

class QPainter;
class QStyleOption;
class QStyleOptionComplex;
class QWidget;
class QRect;

/// How the parts of controls look in the program's own looks. All take their colours from the option's
/// palette; the widget may be null.
namespace wendmark {

/// What a window is for, told by the property "isPrimary" of a tool button, or the default button of a
/// dialog: filled with the accent.
bool isPrimary(const QStyleOption& option, const QWidget* widget);

void paintButton(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintToolButton(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintFocus(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintField(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintFieldFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintMenuFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintGroup(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintCheckBox(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintRadioButton(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintTabBarBase(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintTab(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintHeader(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintArrowUp(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintArrowDown(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintArrowLeft(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintArrowRight(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void paintNothing(const QStyleOption& option, QPainter& painter, const QWidget* widget);

/// A combo box but for its text.
void paintComboBox(const QStyleOption& option, QPainter& painter, const QRect& arrow);

/// A scroll bar whose handle lies at `slider`.
void paintScrollBar(const QStyleOption& option, QPainter& painter, const QRect& slider);

} // namespace wendmark
