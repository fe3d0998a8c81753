// Anything in any order leaves a configuration that can be saved, undone and redone.
#include "endurance/Monkey.h"
#include "endurance/Settings.h"
#include "endurance/Trail.h"
#include "inspect/ConfigDiff.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "support/RecordText.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>

#include <gtest/gtest.h>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int eventsPerRun = 500;

MatrixConfig Decoded(const std::string& bytes) {
    RecordBytes record;
    std::ranges::copy(std::as_bytes(std::span(bytes).first(recordSize)), record.begin());
    return DecodeRecord(record);
}

/// What differs between two records, in words; the first lines of it.
std::string Changes(const std::string& from, const std::string& to) {
    constexpr std::size_t most = 500;
    std::string lines;
    for (const std::string& line : Differences({Decoded(from), {}}, {Decoded(to), {}}))
        lines += line + '\n';
    return lines.substr(0, most);
}

/// An opened file shows its notes without the blanks around them.
std::string AsOpened(const std::string& bytes) {
    MatrixConfig config = Decoded(bytes);
    config.Notes = config.Notes.Trimmed();
    return RecordText(config);
}

QStringList complaints; ///< of Qt about the program

void NoteComplaint(QtMsgType, const QMessageLogContext&, const QString& text) {
    // What the platform without a screen cannot do, and what printing into a missing folder says.
    for (const auto harmless :
         {"This plugin"_L1, "Unimplemented code"_L1, "Mouse event at"_L1, "QPainter::begin()"_L1}) {
        if (text.startsWith(harmless))
            return;
    }
    complaints += text;
}

/// Takes over what is being typed, then shows and takes over every mode, so that followers have what linking
/// makes of them.
void VisitModes(Monkey& monkey) {
    for (int mode = 7; mode >= 0; --mode) {
        monkey.Window().Dispatch("ONLINE");
        monkey.ComeToRest();
        monkey.Window().findChild<QAbstractButton*>(u"Modes_%1"_s.arg(mode))->click();
        monkey.ComeToRest();
    }
    monkey.Window().Dispatch("ONLINE");
}

/// Takes steps until there is none left or `most` are taken; returns how many.
int Take(Monkey& monkey, const char* action, int most) {
    int steps = 0;
    for (; steps < most && monkey.Action(action).isEnabled(); ++steps) {
        monkey.Action(action).trigger();
        monkey.ComeToRest();
    }
    return steps;
}

/// A recovery copy holds these bytes.
bool IsKept(Monkey& monkey, const std::string& bytes) {
    std::error_code error;
    const std::filesystem::path folder = monkey.Boxes().Path("state/recovery").toStdString();
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        if (entry.path().extension() == ".VMC" && ReadText(entry.path()) == bytes)
            return true;
    return false;
}

void SaveUndoAndReopen(Monkey& monkey) {
    VisitModes(monkey);
    const std::string start = monkey.Start();
    const std::string end = RecordText(Config);
    const QString file = monkey.Boxes().Path("end.VMC");
    monkey.Boxes().NextFile = file;
    monkey.Window().Dispatch("SAVEAS");
    monkey.ComeToRest();
    EXPECT_EQ(Changes(ReadText(file.toStdString()), end), "") << "saved";

    const int steps = Take(monkey, "EditUndo", 2 * eventsPerRun);
    EXPECT_FALSE(monkey.Action("EditUndo").isEnabled());
    monkey.Seen["steps"] += steps;
    VisitModes(monkey);
    const std::string undone = RecordText(Config);
    // There may be later steps, which the monkey has undone itself.
    EXPECT_EQ(Take(monkey, "EditRedo", steps), steps);
    VisitModes(monkey);
    EXPECT_EQ(Changes(RecordText(Config), end), "") << "redone " << steps << " steps";
    EXPECT_FALSE(ConfigDiffers());

    monkey.Boxes().NextFile = file;
    monkey.Window().Dispatch("OPEN");
    monkey.ComeToRest();
    EXPECT_EQ(Changes(RecordText(Config), AsOpened(end)), "") << "opened";

    const QString startFile = monkey.Boxes().Path("start.VMC");
    WriteText(startFile.toStdString(), start);
    monkey.Boxes().NextFile = startFile;
    monkey.Window().Dispatch("OPEN");
    monkey.ComeToRest();
    VisitModes(monkey);
    EXPECT_EQ(Changes(undone, RecordText(Config)), "") << "undone " << steps << " steps";
}

} // namespace

TEST(Monkey, BreaksNothing) {
    QApplication::setQuitOnLastWindowClosed(false);
    const int events = Setting("VEK_MONKEY_EVENTS", 2000);
    const auto firstSeed = static_cast<unsigned>(Setting("VEK_MONKEY_SEED", 1));
    const auto handler = qInstallMessageHandler(NoteComplaint);
    std::map<std::string, int> seen;
    for (int run = 0; run * eventsPerRun < events && !HasFailure(); ++run) {
        const unsigned seed = firstSeed + static_cast<unsigned>(run);
        const std::string name =
            "VEK_MONKEY_EVENTS=" + std::to_string(eventsPerRun) + " VEK_MONKEY_SEED=" + std::to_string(seed);
        BeginTrail(name, 200);
        Monkey monkey(seed, eventsPerRun);
        monkey.Begin(static_cast<Monkey::Scene>(seed % 4));
        monkey.Run();
        const std::string trail = Trail();
        monkey.GoOffline();
        SaveUndoAndReopen(monkey);
        monkey.Begin(static_cast<Monkey::Scene>(seed / 4 % 4));
        monkey.Window().close();
        monkey.ComeToRest();
        EndTrail();
        EXPECT_FALSE(monkey.Window().isVisible() || monkey.AnyPortOpen());
        EXPECT_TRUE(!ConfigDiffers() || IsKept(monkey, RecordText(Config))) << "what is not saved";
        for (const std::string& fault : monkey.Faults)
            ADD_FAILURE() << fault;
        EXPECT_EQ(std::exchange(complaints, {}).join(u'\n').toStdString(), "");
        if (HasFailure())
            ADD_FAILURE() << trail;
        for (const auto& [what, count] : monkey.Seen)
            seen[what] += count;
    }
    qInstallMessageHandler(handler);
    for (const auto& [what, count] : seen)
        std::printf("%6d %s\n", count, what.c_str());
    for (const char* what : {"steps", "search", "find", "volume", "block"})
        EXPECT_TRUE(seen[what] > 0 || events < 2000) << what << ": the test does not reach it any more";
}
