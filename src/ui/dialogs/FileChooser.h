#pragma once

#include <QString>

class QWidget;

/// The dialogs in which the author chooses a file. They have the object name "CDialog".
namespace wendmark {

/// Lets the author choose a file that exists; returns its full path, or nothing when the dialog is cancelled.
/// `pattern`: for instance "Pictures (*.jpg *.gif)". `usualEnding` is added to a typed name without one when
/// there is no such file. The dialog begins in `folder`; empty: in the current one.
QString chooseFile(QWidget* parent, const QString& title, const QString& pattern,
                   const QString& usualEnding = {}, const QString& folder = {});

/// Lets the author choose a program. Systems whose programs have no ending of their own show the files that
/// can be run.
QString chooseProgram(QWidget* parent, const QString& title);

} // namespace wendmark
