#include "link/DoctorReport.h"

#include "link/Diagnosis.h"
#include "link/OutcomeTexts.h"

#include <algorithm>
#include <string_view>

namespace vek {

namespace {

constexpr std::size_t mostBytes = 24; // in a line

std::string HexText(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const unsigned byte : bytes.first(std::min(bytes.size(), mostBytes))) {
        text += text.empty() ? "" : " ";
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    if (bytes.size() > mostBytes)
        text += " ... (" + std::to_string(bytes.size()) + " bytes)";
    return text;
}

std::string OrElse(const std::string& text, const char* otherwise) { return text.empty() ? otherwise : text; }

/// "rw-rw----"
std::string ModeText(unsigned mode) {
    constexpr std::string_view letters = "rwxrwxrwx";
    std::string text;
    for (std::size_t i = 0; i < letters.size(); ++i)
        text += (mode >> (letters.size() - 1 - i) & 1) != 0 ? letters[i] : '-';
    return text;
}

std::string Existence(const PortExamination& port) {
    if (!port.Facts.Exists)
        return "there is none";
    return port.Facts.IsSerial ? port.Facts.Device : port.Facts.Device + ", which is no serial port";
}

std::string Adapter(const PortExamination& port) {
    const std::string name = OrElse(port.Facts.Adapter, "does not tell its name");
    return port.Facts.SerialNumber.empty() ? name : name + ", serial number " + port.Facts.SerialNumber;
}

std::string Driver(const PortExamination& port) {
    return port.Facts.IsPseudoTerminal ? "none, this is a pseudo-terminal"
                                       : OrElse(port.Facts.Driver, "not told by the system");
}

std::string Rights(const PortExamination& port) {
    const PortRights& rights = port.Facts.Rights;
    std::string text = ModeText(rights.Mode) + ", owner " + rights.Owner + ", group " + rights.Group;
    text += rights.Allowed ? "; you may use it" : "; you may not use it";
    if (!rights.GroupToJoin.empty())
        text += rights.JoinedSinceLogin ? ", your membership counts from the next login on"
                                        : ", and are not in the group";
    return text;
}

std::string Holders(const PortExamination& port) {
    return OrElse(NamesOf(port.Facts.Holders), "no program that can be seen");
}

std::string Grabbers(const PortExamination& port) {
    return OrElse(NamesOf(port.Facts.Grabbers), "none is running");
}

std::string Opening(const PortExamination& port) {
    return port.Finding.Opened() ? "yes" : "no: " + WhyNotOpened(port.Finding);
}

std::string Settings(const PortExamination& port) {
    const std::string refused = RefusedText(port);
    if (refused.empty())
        return "all that are needed can be set";
    std::string text = "refuses " + refused;
    if (std::ranges::find(port.RefusedSettings, wakePulseSettings) != port.RefusedSettings.end())
        text += "; a break stands for the wake pulse";
    if (port.Facts.IsPseudoTerminal)
        text += "; nothing hangs on that on a pseudo-terminal";
    return text;
}

std::string Unasked(const PortExamination& port) { return OrElse(HexText(port.Unasked), "nothing"); }

struct Fact {
    ExaminationStep KnownFrom;
    bool OnOpenPort; ///< told of a port that opened only
    const char* Label;
    std::string (*Text)(const PortExamination&);
};

constexpr Fact facts[] = {
    {ExaminationStep::Settings, false, "Device", Existence},
    {ExaminationStep::Settings, false, "Adapter", Adapter},
    {ExaminationStep::Settings, false, "Driver", Driver},
    {ExaminationStep::Settings, false, "Rights", Rights},
    {ExaminationStep::Settings, false, "Open in", Holders},
    {ExaminationStep::Settings, false, "Services that open ports", Grabbers},
    {ExaminationStep::Listening, false, "Opens", Opening},
    {ExaminationStep::Listening, true, "Settings", Settings},
    {ExaminationStep::Asking, true, "Comes unasked", Unasked},
};

std::string Line(const std::string& label, const std::string& text) { return label + ": " + text; }

void AddAnswers(std::vector<ReportLine>& lines, const PortExamination& port, const DeviceTypeList& types) {
    std::string silent;
    bool echo = false;
    for (const RateAnswer& answer : port.Answers) {
        const AnswerMeaning meaning = MeaningOf(answer, types);
        const std::string rate = answer.Settings.substr(0, answer.Settings.find(','));
        echo = echo || meaning.Suggests == Cause::Echo;
        if (meaning.Text.empty()) {
            silent.append(silent.empty() ? "" : ", ").append(rate);
            continue;
        }
        ByteVector bytes = answer.Early;
        bytes.insert(bytes.end(), answer.Answer.begin(), answer.Answer.end());
        lines.push_back({.Text = Line("At " + rate + " baud", HexText(bytes) + " - " + meaning.Text)});
    }
    if (!silent.empty())
        lines.push_back({.Text = Line("No answer at", silent + " baud")});
    if (!port.Answers.empty())
        lines.push_back({.Text = Line("Comes back", echo ? "what is sent" : "nothing of what is sent")});
}

void AddPort(std::vector<ReportLine>& lines, const PortExamination& port, const DeviceTypeList& types) {
    lines.push_back({ReportLine::Kind::Port, port.Title});
    for (const Fact& fact : facts) {
        // Of what does not exist there is nothing to tell.
        const bool known = port.Step >= fact.KnownFrom && (port.Facts.Exists || fact.Text == Existence);
        if (known && (port.Finding.Opened() || !fact.OnOpenPort))
            lines.push_back({.Text = Line(fact.Label, fact.Text(port))});
    }
    AddAnswers(lines, port, types);
    if (port.Restart)
        lines.push_back({.Text = Line("Restart", TextOf(*port.Restart).Text)});
    if (port.Step == ExaminationStep::Done)
        lines.push_back({.Text = Line("Suggests", Diagnose(port, types).Text)});
}

} // namespace

std::vector<ReportLine> ReportOf(std::span<const PortExamination> ports, const DeviceTypeList& types) {
    std::vector<ReportLine> lines;
    for (const PortExamination& port : ports)
        AddPort(lines, port, types);
    return lines;
}

std::vector<ReportLine> ConclusionOf(std::span<const PortExamination> ports, const DeviceTypeList& types) {
    const Diagnosis diagnosis = DiagnoseAll(ports, types);
    const bool found = diagnosis.Likeliest <= Cause::Disturbed;
    return {{ReportLine::Kind::Conclusion, Line(found ? "Found" : "Likeliest cause", diagnosis.Text)},
            {ReportLine::Kind::Conclusion, Line("What to do", diagnosis.Advice)}};
}

std::string TextOf(std::span<const ReportLine> lines) {
    std::string text;
    ReportLine::Kind before = ReportLine::Kind::Conclusion;
    for (const ReportLine& line : lines) {
        const bool fact = line.Is == ReportLine::Kind::Fact;
        if (!fact && line.Is != before && !text.empty())
            text += '\n';
        text.append(fact ? "  " : "").append(line.Text).append("\n");
        before = line.Is;
    }
    return text;
}

} // namespace vek
