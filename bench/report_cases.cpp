// The information report's text: all six sections, made side by side, against each section made
// alone. The report should take about as long as its slowest section.

#include <cstddef>
#include <exception>
#include <string>

#include "bench/bench_case.h"
#include "bench/running_host.h"
#include "diagnostics/info_report.h"

namespace {

// The sections in the order of reportSectionMakers.
const char* const sectionNames[] = {"host", "proxy", "system", "antivirus", "browsers", "domain"};

// The host section reads the server's state: it is up, as it is when a user asks for the report.
const BenchCaseRegistration all{{
    .name = "report/all",
    .setup = [] { runningHost(); },
    .run = [] { infoReportText(); },
}};

// A section that fails here is left out of the report, as the machine's facts allow; its time still
// counts, since the report waits for it all the same.
void makeSection(std::size_t index) {
    try {
        reportSectionMakers().at(index)();
    } catch (const std::exception&) {
    }
}

BenchCase sectionCase(std::size_t index) {
    return BenchCase{
        .name = std::string("report/section/") + sectionNames[index],
        .setup = [] { runningHost(); },
        .run = [index] { makeSection(index); },
    };
}

const BenchCaseRegistration hostSection{sectionCase(0)};
const BenchCaseRegistration proxySection{sectionCase(1)};
const BenchCaseRegistration systemSection{sectionCase(2)};
const BenchCaseRegistration antivirusSection{sectionCase(3)};
const BenchCaseRegistration browsersSection{sectionCase(4)};
const BenchCaseRegistration domainSection{sectionCase(5)};

} // namespace
