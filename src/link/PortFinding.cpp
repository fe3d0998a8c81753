#include "link/PortFinding.h"

namespace vek {

PortFinding NotOpened(OpenFailure why) {
    PortFinding finding;
    switch (why) {
    case OpenFailure::NotThere:
        finding.State = PortState::NotThere;
        break;
    case OpenFailure::NotPermitted:
        finding.State = PortState::NotPermitted;
        break;
    case OpenFailure::InUse:
        finding.State = PortState::InUse;
        break;
    }
    return finding;
}

PortFinding Silent() {
    PortFinding finding;
    finding.State = PortState::Silent;
    return finding;
}

PortFinding NotUnderstood(std::string_view settings, const ByteVector& answer) {
    PortFinding finding;
    finding.State = PortState::NotUnderstood;
    finding.Settings = settings;
    finding.Answer = answer;
    return finding;
}

PortFinding Understood(const DeviceTypeList& types, std::uint32_t found, std::string_view settings,
                       const ByteVector& answer) {
    PortFinding finding = NotUnderstood(settings, answer);
    finding.Found = found;
    finding.Type = FindDeviceType(types, static_cast<std::uint8_t>(DeviceCode(finding)));
    if (finding.Type != nullptr)
        finding.State = finding.Type->Reply == matrixVekReply ? PortState::MatrixVek : PortState::OtherDevice;
    return finding;
}

} // namespace vek
