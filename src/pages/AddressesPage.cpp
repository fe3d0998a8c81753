#include "pages/AddressesPage.h"

#include "controls/AddressLabel.h"
#include "controls/FocusGrid.h"
#include "controls/LayoutHelpers.h"
#include "controls/NameLabel.h"
#include "controls/TextConversion.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>

#include <optional>
#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr AddressGroup groups[] = {AddressGroup::Mode, AddressGroup::Route, AddressGroup::RouteControl,
                                   AddressGroup::Volume};

constexpr std::string_view LabelName(AddressGroup group) {
    switch (group) {
    case AddressGroup::Mode:
        return "VekNetLabel2";
    case AddressGroup::Route:
        return "VekNetLabelRoute";
    case AddressGroup::RouteControl:
        return "VekNetLabelRouteControl";
    case AddressGroup::Volume:
        return "VolumeVekNetLabel";
    }
    return {};
}

constexpr std::array volumeCaptions = {"Step Up", "Step Down", "Analog", "Mute"};
constexpr std::array controlCaptions = {"Next", "Previous", "Analog"};

QString FrameTitle(AddressGroup group) {
    switch (group) {
    case AddressGroup::Mode:
        return AddressesPage::tr("Mode Recall");
    case AddressGroup::Route:
    case AddressGroup::RouteControl:
        return AddressesPage::tr("Input Select Addresses");
    case AddressGroup::Volume:
        return AddressesPage::tr("Volume Addresses");
    }
    return {};
}

/// The kind of thing that a row of the group stands for, where it has a number.
std::optional<NameKind> KindOfRows(AddressGroup group) {
    switch (group) {
    case AddressGroup::Mode:
        return NameKind::Mode;
    case AddressGroup::Route:
        return NameKind::Input;
    case AddressGroup::RouteControl:
    case AddressGroup::Volume:
        break;
    }
    return std::nullopt;
}

/// What stands before the labels of a row, and before its name.
QString RowCaption(AddressGroup group, std::size_t row) {
    if (const auto kind = KindOfRows(group))
        return FromConstant(NumberText(*kind, row));
    return AddressesPage::tr(group == AddressGroup::Volume ? volumeCaptions.at(row)
                                                           : controlCaptions.at(row));
}

enum Column { CaptionColumn, NameColumn, InColumn, OutColumn, columnCount };

} // namespace

/// A group box with rows of labels.
struct AddressesPage::Frame {
    QGroupBox* Box;
    QGridLayout* Grid;
    FocusGrid* Focus;
    int Rows = 1; ///< with the headings
};

AddressesPage::AddressesPage(QWidget* parent) : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(MakeModeFrame(), 3); // wider, for its names
    layout->addWidget(MakeInputFrame(), 3);
    layout->addWidget(MakeVolumeFrame(), 2);
    TellMeanings();
}

AddressLabel* AddressesPage::MakeLabel(AddressGroup group, std::size_t function) {
    auto* label = new AddressLabel(this);
    label->setObjectName(ElementName(LabelName(group), function));
    connect(label, &AddressLabel::clicked, this,
            [this, group, function] { Q_EMIT Clicked(group, function); });
    connect(label, &AddressLabel::MenuRequested, this,
            [this, group, function](const QPoint& at) { Q_EMIT MenuRequested(group, function, at); });
    Labels(group)[function] = label;
    return label;
}

AddressesPage::Frame AddressesPage::MakeFrame(const QString& title) {
    auto* box = new QGroupBox(title, this);
    auto* grid = new QGridLayout(box);
    int column = InColumn;
    for (const QString& side : {tr("In"), tr("Out")}) {
        auto* heading = new QLabel(side, box);
        heading->setAlignment(Qt::AlignHCenter);
        grid->addWidget(heading, 0, column++);
    }
    return {box, grid, new FocusGrid(2, box)};
}

void AddressesPage::AddRows(Frame& frame, AddressGroup group) {
    const std::size_t count = FirstOutputFunction(group);
    const auto kind = KindOfRows(group);
    for (std::size_t row = 0; row < count; ++row, ++frame.Rows) {
        frame.Grid->addWidget(new QLabel(RowCaption(group, row), frame.Box), frame.Rows, CaptionColumn);
        if (kind) {
            auto* name = new NameLabel(frame.Box);
            (*kind == NameKind::Mode ? modeNames_ : inputNames_)[row] = name;
            frame.Grid->addWidget(name, frame.Rows, NameColumn);
        }
        int column = InColumn;
        for (const std::size_t function : {row, count + row}) {
            AddressLabel* label = MakeLabel(group, function);
            frame.Grid->addWidget(label, frame.Rows, column++);
            frame.Focus->Add(label);
        }
    }
}

QWidget* AddressesPage::MakeModeFrame() {
    Frame frame = MakeFrame(FrameTitle(AddressGroup::Mode));
    AddRows(frame, AddressGroup::Mode);
    frame.Grid->setRowStretch(frame.Rows, 1);
    return frame.Box;
}

QWidget* AddressesPage::MakeInputFrame() {
    Frame frame = MakeFrame(FrameTitle(AddressGroup::Route));
    AddRows(frame, AddressGroup::Route);
    AddRows(frame, AddressGroup::RouteControl);
    frame.Grid->setRowStretch(frame.Rows, 1);
    return frame.Box;
}

QWidget* AddressesPage::MakeVolumeFrame() {
    Frame frame = MakeFrame(FrameTitle(AddressGroup::Volume));
    AddRows(frame, AddressGroup::Volume);
    auto* hint =
        MakeHint(tr("Click an address to switch it on or off. Right-click for many at once.\n\nInput select "
                    "and volume addresses are those of the output chosen on the left."),
                 frame.Box);
    frame.Grid->setRowMinimumHeight(frame.Rows, 12);
    frame.Grid->addWidget(hint, frame.Rows + 1, 0, 1, columnCount);
    frame.Grid->setRowStretch(frame.Rows + 2, 1);
    return frame.Box;
}

std::span<AddressLabel*> AddressesPage::Labels(AddressGroup group) {
    switch (group) {
    case AddressGroup::Mode:
        return VekNetLabel2_;
    case AddressGroup::Route:
        return VekNetLabelRoute_;
    case AddressGroup::RouteControl:
        return VekNetLabelRouteControl_;
    case AddressGroup::Volume:
        break;
    }
    return VolumeVekNetLabel_;
}

QString AddressesPage::MeaningOf(AddressGroup group, std::size_t function) const {
    const std::size_t rows = FirstOutputFunction(group);
    const std::size_t row = function % rows;
    const auto kind = KindOfRows(group);
    QStringList parts = {FrameTitle(group), kind ? NumberAndName(names_, *kind, row) : RowCaption(group, row),
                         function < rows ? tr("In") : tr("Out")};
    if (group != AddressGroup::Mode)
        parts += NumberAndName(names_, NameKind::Output, output_);
    return parts.join(", "_L1);
}

void AddressesPage::TellMeanings() {
    for (const AddressGroup group : groups) {
        const auto labels = Labels(group);
        for (std::size_t function = 0; function < labels.size(); ++function)
            labels[function]->SetMeaning(MeaningOf(group, function));
    }
}

void AddressesPage::ShowAddresses(const AddressEnables& enables, int base, std::size_t output) {
    if (std::exchange(output_, output) != output)
        TellMeanings();
    for (const AddressGroup group : groups) {
        const auto labels = Labels(group);
        for (std::size_t function = 0; function < labels.size(); ++function)
            labels[function]->ShowAddress(base + AddressOffset(group, function, output),
                                          IsSet(AddressFlag(enables, group, function, output)));
    }
}

void AddressesPage::ShowNames(const Names& names) {
    names_ = names;
    for (std::size_t mode = 0; mode < modeCount; ++mode)
        modeNames_[mode]->SetName(NameOf(names, NameKind::Mode, mode));
    for (std::size_t input = 0; input < inputCount; ++input)
        inputNames_[input]->SetName(NameOf(names, NameKind::Input, input));
    TellMeanings();
}

} // namespace vek
