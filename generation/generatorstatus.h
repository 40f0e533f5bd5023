#pragma once

// Result of the configuration calls and start of a generator.
enum class GeneratorStatus {
    Ok = 0,
    PathMissing = 1,
    PathUnreadable = 2,
    InvalidDatabase = 3,
    InvalidLine = 4,
    Busy = 5,
    NotRunning = 6,
};
