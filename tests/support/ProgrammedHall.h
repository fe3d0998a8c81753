// An attempt of the programming history.
#pragma once

#include "userstate/JournalEntry.h"

namespace vek::test {

inline const JournalEntry programmedHall = {.Time = 1'795'343'045, // 2026-11-22 11:24:05 there
                                            .ZoneOffset = 3600,
                                            .File = "/home/a/hall.VMC",
                                            .Port = "COM1 (ttyUSB0)",
                                            .AdapterSerialNumber = "FT1",
                                            .DeviceName = "Matrix Vek",
                                            .DeviceCode = 39,
                                            .DeviceVersion = "2.5",
                                            .Result = AttemptResult::Programmed,
                                            .Blocks = 273,
                                            .BlocksAcknowledged = 273,
                                            .Retries = 1,
                                            .Milliseconds = 11449,
                                            .ImageDigest = "00ff",
                                            .Host = "desk",
                                            .User = "a"};

} // namespace vek::test
