#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Other programs that this one starts.
namespace wendmark {

/// Identifies a started program; 0 is none.
using TaskId = qint64;

/// Starts a program in a process of its own that goes on when this one ends. Each argument reaches it as it
/// is, no shell reads it. 0 when the program cannot be started.
TaskId startTask(const QString& program, const QStringList& arguments);

/// Brings a window of the program to the front. False when the program has none any more, and where the
/// system lets no program do that to another.
bool activateTask(TaskId id);

} // namespace wendmark
