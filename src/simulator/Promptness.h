// Running without delay on a busy machine.
#pragma once

namespace vek {

/// Asks the system to run the calling thread as soon as it has something to do: a shorter time slice, and
/// where the user may, a higher priority. Without effect on systems that cannot do it.
void AskForPromptness();

} // namespace vek
