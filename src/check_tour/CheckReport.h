#pragma once

#include "check_tour/CheckedTour.h"

#include <QByteArray>
#include <iosfwd>
#include <string>
#include <vector>

/// What a check that has ended says of its tours. The order is that of the command line and of the stops.
namespace wendmark::cli {

/// The text on one line, without anything that would steer a terminal.
std::string harmless(const std::string& text);

/// A table for people.
void printTable(const std::vector<CheckedTour>& tours, std::ostream& output);

/// The same for programs, ended by a line break. Everything that would steer a terminal is escaped.
QByteArray composeJson(const std::vector<CheckedTour>& tours);

} // namespace wendmark::cli
