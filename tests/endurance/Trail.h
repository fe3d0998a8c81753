// The last things that were done, told also when the program dies of the next one.
#pragma once

#include <string>

namespace vek::test {

/// Notes what is done next.
void Note(const std::string& what);
/// A new run: forgets the trail. `name` says how to do it again. A run that takes longer than so many seconds
/// is ended with its trail.
void BeginTrail(const std::string& name, unsigned mostSeconds);
/// The run is over in time.
void EndTrail();
/// The name of the run and its last events, a line each.
std::string Trail();

} // namespace vek::test
