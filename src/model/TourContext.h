#pragma once

namespace wendmark {

class Desktop;
class Log;
class Workspace;
struct TourModel;

/// The open tour and its surroundings, handed to everything that reads, generates or saves it.
struct TourContext {
    TourModel& model;
    Workspace& workspace;
    Desktop& desktop;
    Log& log;
};

} // namespace wendmark
