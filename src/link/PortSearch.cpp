#include "link/PortSearch.h"

namespace vek {

void OpenPort(Exchange& exchange, std::size_t row) { exchange.Open(static_cast<int>(row) + 1); }

Task<> SearchPorts(Exchange& exchange, LinkOutcomes& outcomes, std::function<Task<PortFinding>()> identify) {
    const PortCloser closer(exchange);
    for (std::size_t row = 0; row < portCount; ++row) {
        outcomes.PortSearchBegins(row);
        OpenPort(exchange, row);
        if (!exchange.PortOpen()) {
            outcomes.PortSearched(row, NotOpened(exchange.WhyNotOpen()));
            continue;
        }
        const PortFinding finding = co_await identify();
        exchange.Close();
        outcomes.PortSearched(row, finding);
    }
}

} // namespace vek
