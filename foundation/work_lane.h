#pragma once

#include <functional>

// A lane: one thread that runs the jobs handed to it one after another and lives as long as the
// program. It is made by its first job and then waits for the next one. The program has two: the
// server's (Run, Stop, a new log level, the watchdog's restart) and the reports' ("Get
// information", "Report a problem"), so that a report never waits for a server operation nor
// the other way round.
//
// A thread made and ended for each job is what a lane replaces: under Wine, two such threads
// ending at once were seen to stop each other for good in the system's loader, and the panel then
// waited forever with its buttons disabled.
class WorkLane {
public:
    WorkLane();
    WorkLane(const WorkLane&) = delete;
    WorkLane& operator=(const WorkLane&) = delete;

    // Hands the job to the lane and returns at once; the job runs after those handed before it.
    // A job tells its own failures; one that lets a failure out leaves the lane to the next.
    void post(std::function<void()> job);

private:
    struct Queue;
    // Never destroyed: the thread waits on it until the process ends.
    Queue* const queue_;
};

// The lane of the server's operations.
WorkLane& serverLane();
// The lane of the reports.
WorkLane& reportLane();
