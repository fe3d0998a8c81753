#include "controls/RemoteNumberPanel.h"

#include "controls/KeyFilteredLineEdit.h"
#include "model/Panels.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFrame>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

std::u16string_view View(const QString& text) {
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

/// Blanks are padding; tabs and the like are what a foreign file holds, and stay.
QString TrimmedBlanks(QString text) {
    while (text.startsWith(u' '))
        text.remove(0, 1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QString Ordered(NumberList list, const QString& text) {
    return QString::fromStdU16String(OrderedList(list, View(text)));
}

} // namespace

RemoteNumberPanel::RemoteNumberPanel(QWidget* parent)
    : QWidget(parent), Text1_(new KeyFilteredLineEdit(
                           [this](QChar key, const QString& rest) { return TakesKey(key, rest); }, this)),
      Label1_(new QLabel(this)), mnuHidden_(new QMenu(this)) {
    Text1_->setObjectName("Text1"_L1);
    Text1_->installEventFilter(this);
    Label1_->setObjectName("Label1"_L1);
    Label1_->setAlignment(Qt::AlignCenter);
    Label1_->setTextFormat(Qt::PlainText);
    Label1_->setFocusPolicy(Qt::StrongFocus);
    Label1_->installEventFilter(this);
    Label1_->hide();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(Text1_);
    row->addWidget(Label1_);
    // The same height in both displays: linking an output must not move its row.
    Label1_->setFixedHeight(Text1_->sizeHint().height());
    setFocusProxy(Text1_);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    mnuHidden_->setObjectName("mnuHidden"_L1);
    QAction* mnuLink = mnuHidden_->addAction(tr("&Link Outputs"));
    mnuLink->setObjectName("mnuLink"_L1);
    connect(mnuLink, &QAction::triggered, this, &RemoteNumberPanel::LinkClicked);

    connect(Text1_, &KeyFilteredLineEdit::textChanged, this, [this] {
        if (suppress_)
            return;
        NoteEdit();
        Tidy();
    });
    connect(Text1_, &KeyFilteredLineEdit::KeyTyped, this, [this] {
        if (list_ != NumberList::InputSequence)
            Q_EMIT KeyTyped();
    });
    connect(Text1_, &KeyFilteredLineEdit::Left, this, [this] {
        if (edited_ && !suppress_)
            Q_EMIT Change();
    });
    SetMode(Mode());
}

// Destroyed with the focus in it, the box must not tell that it was left.
RemoteNumberPanel::~RemoteNumberPanel() { Text1_->disconnect(this); }

void RemoteNumberPanel::SetMode(int mode) {
    list_ = static_cast<NumberList>(mode);
    Text1_->setMaxLength(LongestList(list_));
}

QString RemoteNumberPanel::Contents() const { return linked_ ? QString() : Text1_->text(); }

void RemoteNumberPanel::SetContents(const QString& value) {
    suppress_ = true;
    linked_ = value.startsWith(u'L');
    stored_ = TrimmedBlanks(value);
    if (linked_)
        Label1_->setText(stored_);
    else
        Text1_->SetFresh(stored_);
    Text1_->setReadOnly(linked_);
    ShowOnly(linked_ ? static_cast<QWidget*>(Label1_) : Text1_);
    edited_ = false;
    suppress_ = false;
}

void RemoteNumberPanel::ShowOnly(QWidget* display) {
    // First the one, then the other: a focus goes over to what takes its place.
    const bool hadFocus = Text1_->hasFocus() || Label1_->hasFocus();
    display->show();
    setFocusProxy(display);
    if (hadFocus)
        display->setFocus();
    Text1_->setVisible(display == Text1_);
    Label1_->setVisible(display == Label1_);
}

void RemoteNumberPanel::SetAccessibleTitle(const QString& title) {
    setAccessibleName(title);
    Text1_->setAccessibleName(title);
    Label1_->setAccessibleDescription(title);
}

bool RemoteNumberPanel::TakesKey(QChar key, const QString& rest) {
    const KeyVerdict verdict = CheckListKey(list_, key.unicode(), View(rest), taken_);
    if (verdict == KeyVerdict::Taken)
        ShowTaken(key.toUpper());
    return verdict == KeyVerdict::Accept;
}

void RemoteNumberPanel::ShowTaken(QChar panel) {
    const auto& output = taken_[PanelCharToIndex(panel.toLatin1())];
    Text1_->ShowHint(tr("Panel %1 is used by output %2").arg(panel).arg(*output));
}

void RemoteNumberPanel::NoteEdit() {
    if (Text1_->text() == stored_)
        return;
    stored_ = Text1_->text();
    edited_ = true;
    Q_EMIT Change();
}

void RemoteNumberPanel::Tidy() {
    const QString text = Text1_->text();
    const QString ordered = Ordered(list_, text);
    if (linked_ || ordered == text)
        return;
    const int cursor = Text1_->cursorPosition();
    suppress_ = true;
    // Replaced as the user would do it, so that undo still reaches what was there before.
    Text1_->selectAll();
    Text1_->insert(ordered);
    if (cursor > 0) // behind the same character as before
        Text1_->setCursorPosition(static_cast<int>(ordered.indexOf(text[cursor - 1].toUpper())) + 1);
    suppress_ = false;
}

bool RemoteNumberPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::RightButton) {
            mnuHidden_->popup(press->globalPosition().toPoint());
            return true;
        }
    }
    if (watched == Label1_) {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            update(); // the frame around the label shows the focus
        return QWidget::eventFilter(watched, event);
    }
    if (event->type() == QEvent::ContextMenu) {
        contextMenuEvent(static_cast<QContextMenuEvent*>(event));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void RemoteNumberPanel::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has been served by its press already.
    if (event->reason() != QContextMenuEvent::Mouse)
        mnuHidden_->popup(event->globalPos());
    event->accept();
}

void RemoteNumberPanel::paintEvent(QPaintEvent*) {
    if (!linked_)
        return;
    QPainter painter(this);
    QStyleOptionFrame option;
    option.initFrom(this);
    option.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, this);
    option.state |= QStyle::State_Sunken | QStyle::State_ReadOnly;
    option.state.setFlag(QStyle::State_HasFocus, Label1_->hasFocus());
    style()->drawPrimitive(QStyle::PE_FrameLineEdit, &option, &painter, this);
}

} // namespace vek
