#include "pages/AddressesPage.h"

#include "controls/AddressLabel.h"
#include "controls/LayoutHelpers.h"
#include "controls/TextConversion.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>

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

constexpr const char* volumeCaptions[] = {"Step Up", "Step Down", "Analog", "Mute"};
constexpr const char* controlCaptions[] = {"Next", "Previous", "Analog"};

void AddHeadings(QGridLayout* grid, QWidget* parent) {
    int column = 1;
    for (const QString& side : {AddressesPage::tr("In"), AddressesPage::tr("Out")}) {
        auto* heading = new QLabel(side, parent);
        heading->setAlignment(Qt::AlignHCenter);
        grid->addWidget(heading, 0, column++);
    }
}

} // namespace

AddressesPage::AddressesPage(QWidget* parent) : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(MakeModeFrame(), 1);
    layout->addWidget(MakeInputFrame(), 1);
    layout->addWidget(MakeVolumeFrame(), 1);
}

AddressLabel* AddressesPage::MakeLabel(AddressGroup group, std::size_t function, const QString& caption) {
    const bool input = function < FirstOutputFunction(group);
    auto* label = new AddressLabel(caption + u' ' + (input ? tr("In") : tr("Out")), this);
    label->setObjectName(ElementName(LabelName(group), function));
    connect(label, &AddressLabel::clicked, this,
            [this, group, function] { Q_EMIT Clicked(group, function); });
    connect(label, &AddressLabel::MenuRequested, this,
            [this, group, function](const QPoint& at) { Q_EMIT MenuRequested(group, function, at); });
    Labels(group)[function] = label;
    return label;
}

void AddressesPage::AddPair(QGridLayout* grid, int row, const QString& caption, AddressGroup group,
                            std::size_t function) {
    grid->addWidget(new QLabel(caption, this), row, 0);
    grid->addWidget(MakeLabel(group, function, caption), row, 1);
    grid->addWidget(MakeLabel(group, function + FirstOutputFunction(group), caption), row, 2);
}

QWidget* AddressesPage::MakeModeFrame() {
    auto* frame = new QGroupBox(tr("Mode Recall"), this);
    auto* grid = new QGridLayout(frame);
    AddHeadings(grid, frame);
    int row = 1;
    for (std::size_t mode = 0; mode < modeCount; ++mode)
        AddPair(grid, row++, tr("Mode %1").arg(mode + 1), AddressGroup::Mode, mode);
    grid->setRowStretch(row, 1);
    return frame;
}

QWidget* AddressesPage::MakeInputFrame() {
    auto* frame = new QGroupBox(tr("Input Select Addresses"), this);
    auto* grid = new QGridLayout(frame);
    AddHeadings(grid, frame);
    int row = 1;
    for (std::size_t input = 0; input < inputCount; ++input)
        AddPair(grid, row++, tr("Input %1").arg(input + 1), AddressGroup::Route, input);
    for (std::size_t control = 0; control < std::size(controlCaptions); ++control)
        AddPair(grid, row++, tr(controlCaptions[control]), AddressGroup::RouteControl, control);
    grid->setRowStretch(row, 1);
    return frame;
}

QWidget* AddressesPage::MakeVolumeFrame() {
    auto* frame = new QGroupBox(tr("Volume Addresses"), this);
    auto* grid = new QGridLayout(frame);
    AddHeadings(grid, frame);
    int row = 1;
    for (std::size_t function = 0; function < std::size(volumeCaptions); ++function)
        AddPair(grid, row++, tr(volumeCaptions[function]), AddressGroup::Volume, function);
    auto* hint =
        MakeHint(tr("Click an address to switch it on or off. Right-click for many at once.\n\nInput select "
                    "and volume addresses are those of the output chosen on the left."),
                 frame);
    grid->setRowMinimumHeight(row++, 12);
    grid->addWidget(hint, row++, 0, 1, 3);
    grid->setRowStretch(row, 1);
    return frame;
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

void AddressesPage::ShowAddresses(const AddressEnables& enables, int base, std::size_t output) {
    for (const AddressGroup group : groups) {
        const auto labels = Labels(group);
        for (std::size_t function = 0; function < labels.size(); ++function) {
            if (IsSet(AddressFlag(enables, group, function, output)))
                labels[function]->SetAddress(base + AddressOffset(group, function, output));
            else
                labels[function]->SetOff();
        }
    }
}

} // namespace vek
