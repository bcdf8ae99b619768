#pragma once

#include <functional>
#include <string>
#include <vector>

using Collector = std::function<void()>;
using SectionMaker = std::function<std::string()>;

// Starts every callable at once, each on a thread of its own, and waits for them in list order.
// A failure is swallowed when ignoreFailures is set, else it comes out at once, when its turn in
// the list comes.
void runAll(const std::vector<Collector>& collectors, bool ignoreFailures);

// The same for callables with a text; the texts come in list order, whichever ended first, and a
// maker that failed leaves no entry.
std::vector<std::string> runAllCollect(const std::vector<SectionMaker>& sectionMakers,
                                       bool ignoreFailures);
