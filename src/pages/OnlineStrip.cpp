#include "pages/OnlineStrip.h"

#include "controls/Contrast.h"
#include "controls/LayoutHelpers.h"
#include "controls/LevelTrim.h"
#include "controls/NameLabel.h"
#include "controls/StatementLabel.h"
#include "controls/SteadyPlace.h"
#include "controls/TextConversion.h"
#include "controls/WithoutEffect.h"
#include "model/Levels.h"

#include <QCheckBox>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

// Not of the palette: they warn in every one.
constexpr QColor onAir(0xb3, 0x59, 0x00);
constexpr QColor alarm(0xcf, 0x22, 0x2e);
constexpr QColor onStrong(0xff, 0xff, 0xff);
constexpr QColor sure(0x1a, 0x7f, 0x37);
constexpr QColor muteButton(0x8c, 0x10, 0x1a); // styles draw buttons lighter than their colour

constexpr QMargins frameMargins(8, 1, 8, 3); // low: the page above needs the room
constexpr double buttonText = 1.15;          // of the usual size
constexpr int levelCharacters = 7;           // at least, as much as a name
constexpr int stateCharacters = 20;          // of a line, at least
constexpr int notSentCharacters = 12;
constexpr int notSentLines = 2; // at least

void Colour(QWidget& widget, const QColor& background) {
    QPalette palette;
    for (const auto role : {QPalette::Window, QPalette::Button})
        palette.setColor(role, background);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(role, onStrong);
    widget.setPalette(palette);
}

/// As low as its contents can be, and with half of that on the smallest screens. Scrolls what has no room.
class StripScroll : public QScrollArea {
  public:
    explicit StripScroll(QWidget* parent) : QScrollArea(parent) {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
        viewport()->setAutoFillBackground(false);
    }

    QSize sizeHint() const override {
        const QSize least = widget()->minimumSizeHint();
        const int bar = width() < least.width() ? horizontalScrollBar()->sizeHint().height() : 0;
        return {widget()->sizeHint().width(), least.height() + bar};
    }
    QSize minimumSizeHint() const override { return widget()->minimumSizeHint() / 2; }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        updateGeometry();
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
};

/// A control above the name of what it stands for. All are equally wide.
QVBoxLayout* AddNamed(QHBoxLayout& row, QWidget& control, NameLabel& name) {
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(&control);
    column->addWidget(&name);
    row.addLayout(column, 1);
    return column;
}

/// The row of names is there when one of them is.
void ShowRow(const std::array<NameLabel*, 8>& labels, const Names& names, NameKind kind) {
    for (std::size_t i = 0; i < labels.size(); ++i)
        labels[i]->SetName(NameOf(names, kind, i));
    const bool any =
        std::ranges::any_of(labels, [](const NameLabel* label) { return !label->text().isEmpty(); });
    for (NameLabel* label : labels) {
        QSizePolicy policy = label->sizePolicy();
        policy.setRetainSizeWhenHidden(any);
        label->setSizePolicy(policy);
    }
}

} // namespace

OnlineStrip::OnlineStrip(QWidget* parent)
    : QWidget(parent), muteCaption_(tr("Mute")), notSentCaption_(tr("not sent")),
      OnlineState_(new StatementLabel(this)) {
    OnlineState_->setObjectName(u"OnlineState"_s);
    OnlineState_->setAutoFillBackground(true);
    const int margin = fontMetrics().height() / 4;
    OnlineState_->setContentsMargins(2 * margin, margin, 2 * margin, margin);

    auto* frames = new QVBoxLayout;
    frames->setSpacing(2);
    frames->addWidget(MakeInputs());
    frames->addWidget(MakeMutes());
    frames->addStretch(1);
    auto* scroll = new StripScroll(this);
    auto* contents = new QWidget;
    auto* columns = new QHBoxLayout(contents);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->addLayout(frames, 1);
    columns->addLayout(MakeActions());
    columns->addLayout(MakeOffset());
    scroll->setWidget(contents);
    contents->setAutoFillBackground(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3);
    // What is true, and the way to silence, stand still when the rest is scrolled.
    auto* firm = new QHBoxLayout;
    auto* state = new SteadyPlace(OnlineState_, stateCharacters, StatementLabel::lines, this);
    state->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    firm->addWidget(state, 1);
    firm->addWidget(MakeMuteAll());
    layout->addLayout(firm);
    layout->addWidget(scroll);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

int OnlineStrip::CaptionWidth() const {
    return std::max(fontMetrics().horizontalAdvance(muteCaption_),
                    fontMetrics().horizontalAdvance(notSentCaption_)) +
           fontMetrics().height() / 2;
}

QWidget* OnlineStrip::MakeInputs() {
    auto* frame = new QGroupBox(tr("Input"), this);
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(frameMargins);
    // Input and mute of the same number stand below each other.
    inputNotSent_ = new QLabel(frame);
    inputNotSent_->setObjectName(u"InputNotSent"_s);
    inputNotSent_->setFixedWidth(CaptionWidth());
    row->addWidget(inputNotSent_, 0, Qt::AlignTop);
    for (std::size_t input = 0; input < inputCount; ++input) {
        auto* option = new QRadioButton(QString::number(input + 1), frame);
        option->setObjectName(ElementName("RouteOption", input));
        option->setAccessibleName(tr("Listen to input %1").arg(input + 1));
        connect(option, &QRadioButton::clicked, this, [this, input] { Q_EMIT RouteClicked(input); });
        RouteOption[input] = option;
        inputNames_[input] = new NameLabel(frame);
        AddNamed(*row, *option, *inputNames_[input]);
    }
    RouteOption[0]->setChecked(true);
    return frame;
}

QWidget* OnlineStrip::MakeMutes() {
    auto* frame = new QGroupBox(tr("Output"), this);
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(frameMargins);
    auto* caption = new QLabel(muteCaption_, frame);
    caption->setFixedWidth(CaptionWidth());
    row->addWidget(caption, 0, Qt::AlignTop);
    for (std::size_t output = 0; output < outputCount; ++output) {
        auto* check = new QCheckBox(QString::number(output + 1), frame);
        check->setObjectName(ElementName("OutPutSelectCheck", output));
        check->setAccessibleName(tr("Mute output %1").arg(output + 1));
        connect(check, &QCheckBox::clicked, this, &OnlineStrip::MuteClicked);
        OutPutSelectCheck[output] = check;
        outputNames_[output] = new NameLabel(frame);
        QVBoxLayout* column = AddNamed(*row, *check, *outputNames_[output]);
        Confirmed_[output] = new QLabel(frame);
        Confirmed_[output]->setObjectName(ElementName("Confirmed", output));
        Confirmed_[output]->setAutoFillBackground(false);
        column->addWidget(new SteadyPlace(Confirmed_[output], levelCharacters, 1, frame));
        ShowConfirmed(output, {}, Certainty::Unknown);
    }
    return frame;
}

QWidget* OnlineStrip::MakeMuteAll() {
    MuteAll = new QPushButton(tr("Mute all\nCtrl+M"), this);
    MuteAll->setObjectName(u"MuteAll"_s);
    MuteAll->setToolTip(tr("Ticks all mute boxes and sends that before anything else"));
    QFont large = MuteAll->font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * buttonText);
    MuteAll->setFont(large);
    MuteAll->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    Colour(*MuteAll, muteButton);
    return MuteAll;
}

QLayout* OnlineStrip::MakeActions() {
    SafeLevels = new QCheckBox(tr("Safe levels"), this);
    SafeLevels->setObjectName(u"SafeLevels"_s);
    SafeLevels->setToolTip(
        tr("No output is sent more than its Maximum Level of the mode, and levels rise by at "
           "most 6 dB at a time; they fall at once"));
    SendAllAgain = new QPushButton(tr("Send all again"), this);
    SendAllAgain->setObjectName(u"SendAllAgain"_s);
    QFont strong = SendAllAgain->font();
    strong.setBold(true);
    SendAllAgain->setFont(strong); // as wide as it may become
    SendAllAgain->setMinimumWidth(SendAllAgain->sizeHint().width());
    SendAllAgain->setFont(SafeLevels->font());
    SendAllAgain->setToolTip(tr("Sends the routes and the levels of this page anew"));
    notSent_ = new QLabel(this);
    notSent_->setObjectName(u"NotSent"_s);
    notSent_->setTextFormat(Qt::PlainText);
    notSent_->setWordWrap(true);
    notSent_->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(SafeLevels);
    column->addWidget(SendAllAgain);
    column->addWidget(new SteadyPlace(notSent_, notSentCharacters, notSentLines, this), 1);
    return column;
}

QLayout* OnlineStrip::MakeOffset() {
    OnlineLabel32 = new QLabel(tr("Online Level Offset"), this);
    OnlineLabel32->setObjectName(u"OnlineLabel32"_s);
    OnlineLevelOffset = new LevelTrim(this);
    OnlineLevelOffset->setObjectName(u"OnlineLevelOffset"_s);
    OnlineLevelOffset->SetAccessibleTitle(OnlineLabel32->text());
    OnlineLevelOffset->SetMaxLevel(trimMaximum);
    OnlineLevelOffset->SetMinLevel(trimMinimum);
    connect(OnlineLevelOffset, &LevelTrim::Change, this, &OnlineStrip::OffsetChanged);
    auto* column = new QVBoxLayout;
    column->addWidget(OnlineLabel32, 0, Qt::AlignHCenter);
    column->addWidget(OnlineLevelOffset, 1, Qt::AlignHCenter);
    return column;
}

void OnlineStrip::ShowNames(const Names& names) {
    ShowRow(inputNames_, names, NameKind::Input);
    ShowRow(outputNames_, names, NameKind::Output);
}

void OnlineStrip::ShowState(const QString& text, const QString& shorter, bool alarming) {
    OnlineState_->Show(text, shorter);
    const QColor& colour = alarming ? alarm : onAir;
    if (OnlineState_->palette().color(QPalette::Window) != colour)
        Colour(*OnlineState_, colour);
}

void OnlineStrip::ShowConfirmed(std::size_t output, const QString& level, Certainty certainty) {
    const QString text = certainty == Certainty::Pending  ? level + u" …"_s
                         : certainty == Certainty::Failed ? level + u" ?"_s
                         : level.isEmpty()                ? u"–"_s
                                                          : level;
    QLabel& label = *Confirmed_[output];
    if (label.text() == text && certainties_[output] == certainty)
        return;
    label.setText(text);
    certainties_[output] = certainty;
    static const char* const meanings[] = {
        QT_TR_NOOP("Nothing was sent to this output yet"),
        QT_TR_NOOP("What the device has confirmed; it has not answered yet to what was sent last"),
        QT_TR_NOOP("What the device has confirmed"),
        QT_TR_NOOP("What the device has confirmed; it did not acknowledge what was sent last")};
    label.setToolTip(tr(meanings[static_cast<int>(certainty)]));
    PaintConfirmed(output);
}

void OnlineStrip::PaintConfirmed(std::size_t output) {
    QLabel& label = *Confirmed_[output];
    QPalette palette;
    const QColor background = palette.color(QPalette::Window);
    const auto readable = [&background](const QColor& colour) { return ReadableOn(colour, background); };
    const Certainty certainty = certainties_[output];
    if (certainty == Certainty::Failed)
        palette.setColor(QPalette::WindowText, readable(alarm));
    else if (certainty == Certainty::Confirmed)
        palette.setColor(QPalette::WindowText, readable(sure));
    label.setPalette(palette);
}

void OnlineStrip::ShowNotSent(const QString& what, bool input) {
    const QString text = what.isEmpty() ? QString() : tr("Not sent: %1").arg(what);
    if (notSent_->text() != text) {
        notSent_->setText(text);
        SetPlainToolTip(*notSent_, text);
    }
    inputNotSent_->setText(input ? notSentCaption_ : QString());
    QFont font = SafeLevels->font();
    font.setBold(!text.isEmpty());
    if (SendAllAgain->font() != font)
        SendAllAgain->setFont(font);
}

void OnlineStrip::ShowWithoutEffect(const QString& reason) {
    for (QCheckBox* check : OutPutSelectCheck)
        DrawWithoutEffect(*check, reason);
    DrawWithoutEffect(*OnlineLevelOffset, reason);
}

void OnlineStrip::Reset() {
    OnlineLevelOffset->SetLevel(0);
    for (std::size_t output = 0; output < outputCount; ++output) {
        OutPutSelectCheck[output]->setChecked(false);
        ShowConfirmed(output, {}, Certainty::Unknown);
    }
    ShowNotSent({}, false);
    ShowState({}, {}, false);
}

void OnlineStrip::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    for (std::size_t output = 0; output < outputCount; ++output)
        PaintConfirmed(output);
}

std::size_t OnlineStrip::Input() const {
    const auto checked = std::ranges::find_if(RouteOption, &QRadioButton::isChecked);
    return static_cast<std::size_t>(checked - RouteOption.begin());
}

} // namespace vek
