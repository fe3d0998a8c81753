// What the windows say of a programming attempt.
#pragma once

#include "link/Outcomes.h"
#include "model/Config.h"
#include "userstate/JournalEntry.h"

#include <QString>

#include <cstdint>

namespace vek {

/// "Sends hall.VMC (3 modes in use, VekNet 768 to 1023)". The path is empty for a configuration without a
/// file.
QString SendsText(const MatrixConfig& config, const std::string& file);

/// "COM1" of "COM1 (ttyUSB0)"
QString ShortPortName(const QString& port);

/// "asked at 9600 baud, 1 of 7"
QString SearchText(const SearchStep& step);

/// "Block 115 of 273 · 0 retries · 2 s left", from the time that the blocks so far took.
QString DetailsText(const DownloadProgress& progress, std::int64_t milliseconds);

/// What became of an attempt, and of its device: "Programmed Matrix Vek 2.5 on COM1 (ttyUSB0), 11:24, 273
/// blocks, 0 retries".
QString ResultText(const JournalEntry& attempt);
/// "COM1 (ttyUSB0) holds an incomplete configuration: program it again"
QString IncompleteText(const QString& port);

} // namespace vek
