#include "pages/PortRows.h"

#include "controls/ElidedLabel.h"
#include "controls/LayoutHelpers.h"
#include "controls/TextConversion.h"
#include "link/OutcomeTexts.h"

#include <QButtonGroup>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyleOption>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int deviceCharacters = 34; // of a name that is shown in full
constexpr int deviceMargin = 12;
constexpr int typeCharacters = 24; // of the longest name with a version

QString ComName(std::size_t row) { return PortRows::tr("COM%1").arg(row + 1); }

} // namespace

PortRows::PortRows(const PortRowNames& names, PortSources sources, QWidget* parent)
    : QWidget(parent), sources_(std::move(sources)) {
    options_ = new QButtonGroup(this);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnStretch(3, 1);
    for (std::size_t row = 0; row < portCount; ++row) {
        rows_[row] = MakeRow(names, row);
        const int line = static_cast<int>(row);
        grid->addWidget(rows_[row].Number, line, 0);
        grid->addWidget(rows_[row].Option, line, 0);
        grid->addWidget(rows_[row].Device, line, 1);
        grid->addWidget(rows_[row].VekType, line, 2);
        grid->addWidget(rows_[row].Finding, line, 3);
        // The same cells: while it shows it covers the row.
        grid->addWidget(rows_[row].Blanking, line, 0, 1, 3);
        rows_[row].Blanking->raise();
    }
}

QLabel* PortRows::MakeSearchHint(QWidget* parent) {
    QLabel* hint = MakeHint(tr("A search restarts every known device on the ports"), parent);
    hint->setObjectName(u"SearchHint"_s);
    hint->setMinimumWidth(hint->sizeHint().width() / 3); // else it wraps after each word
    KeepPlaceWhenHidden(hint);
    return hint;
}

void PortRows::RefreshDevices() {
    devices_ = sources_.Names();
    for (std::size_t row = 0; row < portCount; ++row)
        ShowDevice(row, devices_.value(static_cast<qsizetype>(row)));
}

void PortRows::ShowDevice(std::size_t row, const QString& device) {
    const QString adapter =
        device.isEmpty() ? QString() : QString::fromStdString(sources_.Facts(row).Adapter);
    const QString both = adapter.isEmpty() ? device : u"%1 (%2)"_s.arg(adapter, device);
    rows_[row].Device->setText(device.isEmpty() ? tr("no port") : both);
    for (QWidget* widget :
         {static_cast<QWidget*>(rows_[row].Device), static_cast<QWidget*>(rows_[row].Option),
          static_cast<QWidget*>(rows_[row].VekType)})
        SetPlainToolTip(*widget, both);
}

QString PortRows::PortName(std::size_t row) const {
    const QString device = devices_.value(static_cast<qsizetype>(row));
    return device.isEmpty() ? ComName(row) : ComName(row) + u" (%1)"_s.arg(device);
}

void PortRows::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    RefreshDevices();
}

PortRows::Row PortRows::MakeRow(const PortRowNames& names, std::size_t row) {
    const QString port = ComName(row);
    auto* device = new ElidedLabel(QString(), this);
    // The frame that covers the row takes the grid's own spacing away.
    device->setContentsMargins(deviceMargin, 0, deviceMargin, 0);
    device->setMaximumWidth(fontMetrics().averageCharWidth() * deviceCharacters + 2 * deviceMargin);
    auto* option = new QRadioButton(port, this);
    option->setObjectName(ElementName(names.Option, row));
    option->setVisible(false);
    option->setEnabled(false);
    options_->addButton(option);
    connect(option, &QRadioButton::toggled, this, [this, row](bool on) {
        if (on)
            Q_EMIT Chosen(row);
    });

    auto* type = new QLineEdit(this);
    type->setObjectName(ElementName(names.Type, row));
    type->setReadOnly(true);
    type->setAccessibleName(tr("Device on %1").arg(port));
    type->setVisible(false);
    type->setFixedWidth(fontMetrics().averageCharWidth() * typeCharacters);
    auto* finding = new ElidedLabel(QString(), this, Qt::ElideRight);
    finding->setObjectName(ElementName(names.Finding, row));
    finding->setIndent(deviceMargin);

    auto* blanking = new QFrame(this);
    blanking->setObjectName(ElementName(names.Blanking, row));
    blanking->setAutoFillBackground(true);
    blanking->setFrameShape(QFrame::StyledPanel);
    auto* label = new QLabel(blanking);
    label->setObjectName(names.NumberedBlankingLabel ? ElementName(names.BlankingLabel, row)
                                                     : FromConstant(names.BlankingLabel));
    auto* inside = new QHBoxLayout(blanking);
    inside->setContentsMargins(8, 0, 8, 0);
    inside->addWidget(label);
    blanking->setVisible(false);

    // Stands where the button does not.
    auto* number = new QLabel(port, this);
    QStyleOption metrics;
    metrics.initFrom(option);
    const QStyle& look = *style();
    number->setIndent(look.pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, &metrics, option) +
                      look.pixelMetric(QStyle::PM_RadioButtonLabelSpacing, &metrics, option));

    for (QWidget* widget :
         {static_cast<QWidget*>(option), static_cast<QWidget*>(type), static_cast<QWidget*>(blanking)})
        KeepPlaceWhenHidden(widget);
    return {number, device, option, type, finding, blanking, label, false};
}

void PortRows::BeginSearch() { Cover(tr("Please Wait Searching for Veks")); }

void PortRows::BeginWait(const QString& why) { Cover(why); }

void PortRows::Cover(const QString& text) {
    for (Row& row : rows_) {
        row.Selectable = false;
        row.BlankingLabel->setText(text);
        row.Blanking->setVisible(true);
        ShowText(row, {});
        ShowOption(row, false);
    }
    DeselectAll();
    EnableOptions();
}

void PortRows::ShowText(const Row& row, const QString& finding) {
    row.Finding->setText(finding);
    SetPlainToolTip(*row.Finding, finding);
}

void PortRows::ShowSearch(std::size_t row, const QString& text) { ShowText(rows_[row], text); }

void PortRows::ShowFinding(std::size_t row, const PortFinding& finding) {
    Row& shown = rows_[row];
    ShowText(shown, QString::fromStdString(FindingText(finding, sources_.Facts(row))));
    shown.VekType->setText(QString::fromStdString(TextOf(finding)));
    shown.VekType->setVisible(finding.Opened());
    shown.Selectable = finding.State == PortState::MatrixVek;
    shown.Blanking->setVisible(false);
    EnableOptions();
}

void PortRows::EndSearch() {
    for (const Row& row : rows_)
        ShowOption(row, !row.VekType->isHidden());
    DeselectAll();
}

bool PortRows::AnyMatrixVek() const { return std::ranges::any_of(rows_, &Row::Selectable); }

bool PortRows::FocusFirstFound() {
    const auto found = std::ranges::find_if(rows_, &Row::Selectable);
    if (found == rows_.end())
        return false;
    found->Option->setFocus();
    return true;
}

void PortRows::Clear() {
    for (Row& row : rows_) {
        row.Selectable = false;
        row.Blanking->setVisible(false);
        row.VekType->clear();
        ShowText(row, {});
    }
    DeselectAll();
    EnableOptions();
}

std::optional<std::size_t> PortRows::ChosenRow() const {
    for (std::size_t row = 0; row < portCount; ++row) {
        if (rows_[row].Option->isChecked())
            return row;
    }
    return std::nullopt;
}

void PortRows::LockChoice(bool locked) {
    locked_ = locked;
    EnableOptions();
}

void PortRows::ShowOption(const Row& row, bool visible) {
    row.Option->setVisible(visible);
    row.Number->setVisible(!visible);
}

void PortRows::EnableOptions() {
    for (const Row& row : rows_)
        row.Option->setEnabled(row.Selectable && (!locked_ || row.Option->isChecked()));
}

void PortRows::DeselectAll() {
    // An exclusive group would not let go of its last checked button.
    options_->setExclusive(false);
    for (const Row& row : rows_)
        row.Option->setChecked(false);
    options_->setExclusive(true);
}

} // namespace vek
