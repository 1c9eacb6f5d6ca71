#include "editor/EditDlg.h"

#include "controls/icons.h"
#include "controls/qt_text.h"
#include "editor/Desk.h"
#include "editor/accessible_texts.h"
#include "editor/mnemonics.h"
#include "ui_EditDlg.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QShortcut>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

using corma::AccessibleText;
using corma::SettingForm;
using corma::toQt;
using Input = SettingForm::Input;

namespace {

constexpr int kPickIconSize = 16; // device-independent pixels
constexpr int kUsualWidth = 440; // of the dialog, as above
constexpr int kMostOfScreen = 2; // a picture or a question takes at most one part in so many

// A field that is only read looks like the text that it is, and can be copied.
void showAsText(QLineEdit& field)
{
    QPalette palette = field.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    field.setPalette(palette);
    field.setFrame(false);
    field.setReadOnly(true);
}

void showLine(QWidget& label, QLineEdit& field, const std::optional<std::wstring>& text)
{
    label.setVisible(text.has_value());
    field.setVisible(text.has_value());
    field.setText(toQt(text.value_or(L"")));
    field.setCursorPosition(0);
}

void showTickBox(QCheckBox& widget, const SettingForm::TickBox& box)
{
    widget.setVisible(box.isShown);
    widget.setEnabled(box.isEnabled);
    widget.setChecked(box.isTicked);
}

} // namespace

EditDlg::EditDlg(corma::Desk& desk, QWidget* parent)
    : QDialog(parent)
    , m_desk(desk)
    , m_ui(std::make_unique<Ui::EditDlg>())
    , m_askFile(corma::askWithFileDialog)
{
    m_ui->setupUi(this);
    okButton().setText(QStringLiteral("OK"));
    okButton().setObjectName(QStringLiteral("okButton"));
    cancelButton().setObjectName(QStringLiteral("cancelButton"));
    for (QLineEdit* const field :
         {m_ui->typeText, m_ui->levelText, m_ui->globalText, m_ui->projectText}) {
        showAsText(*field);
    }
    m_ui->optionField->setCompleter(nullptr); // what is typed is stored as it was typed
    connectInputs();
}

EditDlg::~EditDlg() = default;

QPushButton& EditDlg::okButton() const
{
    return *m_ui->buttons->button(QDialogButtonBox::Ok);
}

QPushButton& EditDlg::cancelButton() const
{
    return *m_ui->buttons->button(QDialogButtonBox::Cancel);
}

// The form is made here and not at construction, where the operations of derived dialogs do not
// reach yet.
void EditDlg::setVisible(bool visible)
{
    if (visible && m_form == nullptr) {
        fill();
    }
    QDialog::setVisible(visible);
}

void EditDlg::connectInputs()
{
    connect(m_ui->valueField, &QLineEdit::textEdited, this, &EditDlg::fieldEdited);
    connect(m_ui->valueBox, &QPlainTextEdit::textChanged, this,
            [this] { m_form->setBoxText(m_ui->valueBox->toPlainText().toStdWString()); });
    connect(m_ui->question, &QCheckBox::clicked, this,
            [this](bool isYes) { m_form->setYes(isYes); });
    for (QComboBox* const box : {m_ui->optionList, m_ui->optionField}) {
        connect(box, &QComboBox::activated, this,
                [this](int entry) { m_form->choose(static_cast<std::size_t>(entry)); });
    }
    connect(m_ui->optionField, &QComboBox::editTextChanged, this,
            [this](const QString& text) { m_form->setOptionText(text.toStdWString()); });
    connect(m_ui->saveGlobally, &QCheckBox::clicked, this,
            [this](bool isTicked) { m_form->tickGlobally(isTicked); });
    connect(m_ui->saveInProject, &QCheckBox::clicked, this,
            [this](bool isTicked) { m_form->tickInProject(isTicked); });
    connect(m_ui->browseButton, &QPushButton::clicked, this, &EditDlg::browse);
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &EditDlg::accept);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &EditDlg::reject);
    // In a field of several lines Enter begins another one.
    for (const QKeyCombination key : {Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter}) {
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this,
                &EditDlg::accept);
    }
}

// --- opening -------------------------------------------------------------------------------------

std::unique_ptr<SettingForm> EditDlg::makeForm()
{
    return std::make_unique<SettingForm>(m_desk);
}

void EditDlg::addInputs(QWidget* inputs, std::initializer_list<QWidget*> tabOrder)
{
    m_ui->ownInputs->addWidget(inputs);
    if (m_lastOwnInput == nullptr) {
        m_lastOwnInput = m_ui->question;
    }
    for (QWidget* const input : tabOrder) {
        setTabOrder(std::exchange(m_lastOwnInput, input), input);
    }
    setTabOrder(m_lastOwnInput, m_ui->saveGlobally);
}

void EditDlg::fill()
{
    m_form = makeForm();
    setWindowTitle(toQt(m_form->caption()));
    setTexts();
    showLevels();
    fillChoices();
    showInputs();
    showLimits();
    showTickBoxes();
    showPicture();
    fitSize();
    focusInput();
}

void EditDlg::setTexts()
{
    const corma::FixedTexts& texts = m_desk.texts();
    m_ui->newValueLabel->setBuddy(&input());
    for (QWidget* const each : std::initializer_list<QWidget*> {
             m_ui->valueField, m_ui->valueBox, m_ui->optionList, m_ui->optionField}) {
        each->setAccessibleName(toQt(texts.newValue));
    }
    std::vector<corma::MnemonicText> group = ownTexts();
    if (group.empty()) {
        group = {{m_ui->newValueLabel, texts.newValue}, {m_ui->browseButton, texts.browse}};
    }
    group.insert(group.end(),
                 {{m_ui->saveGlobally, texts.saveGlobally},
                  {m_ui->saveInProject, texts.saveInProject},
                  {m_ui->typeLabel, texts.type},
                  {m_ui->globalLabel, texts.global},
                  {m_ui->projectLabel, texts.project}});
    corma::setTextsWithMnemonics(group);
    cancelButton().setText(toQt(corma::withoutMnemonic(texts.cancel)));
    m_ui->question->setText(toQt(corma::withoutMnemonic(m_form->question())));
    m_ui->question->setAccessibleName(toQt(m_form->question()));
}

void EditDlg::showLevels()
{
    const QString level = toQt(m_form->levelText());
    m_ui->typeText->setText(toQt(m_form->typeText()));
    m_ui->levelIcon->setPixmap(
        corma::markIcon(m_form->levelIcon())
            .pixmap(QSize(kPickIconSize, kPickIconSize), devicePixelRatioF()));
    m_ui->levelIcon->setAccessibleName(level);
    m_ui->levelText->setText(level);
    m_ui->levelText->setAccessibleName(toQt(corma::accessibleText(AccessibleText::level)));
    showLine(*m_ui->globalLabel, *m_ui->globalText, m_form->globalValue());
    showLine(*m_ui->projectLabel, *m_ui->projectText, m_form->projectValue());
}

void EditDlg::fillChoices()
{
    QComboBox& box = m_form->input() == Input::optionField ? *m_ui->optionField : *m_ui->optionList;
    const QSignalBlocker blocker(box);
    for (const SettingForm::Choice& choice : m_form->choices()) {
        box.addItem(toQt(choice.text));
    }
    const auto chosen = m_form->chosen();
    box.setCurrentIndex(chosen ? static_cast<int>(*chosen) : -1);
    if (box.isEditable()) {
        box.setEditText(toQt(m_form->optionText()));
    }
}

void EditDlg::showInputs()
{
    const Input input = m_form->input();
    const bool hasOwn = m_lastOwnInput != nullptr;
    m_ui->newValueLabel->setVisible(m_form->hasInputLabel() && !hasOwn);
    m_ui->valueField->setVisible(input == Input::field && !hasOwn);
    m_ui->valueBox->setVisible(input == Input::box);
    m_ui->questionArea->setVisible(input == Input::question);
    m_ui->optionList->setVisible(input == Input::optionList);
    m_ui->optionField->setVisible(input == Input::optionField);
    m_ui->browseButton->setVisible(m_form->hasBrowse());
    m_ui->browseButton->setEnabled(m_form->isEnabled());
    if (input == Input::box) {
        m_ui->newValueLabel->setAlignment(Qt::AlignLeading | Qt::AlignTop);
        m_ui->formSpacer->changeSize(0, m_ui->formSpacer->sizeHint().height()); // all for the lines
    }
    for (QWidget* const each : std::initializer_list<QWidget*> {
             m_ui->valueField, m_ui->question, m_ui->optionList, m_ui->optionField}) {
        each->setEnabled(m_form->isEnabled());
    }
    // Its lines must stay in reach of the scroll bar.
    m_ui->valueBox->setReadOnly(!m_form->isEnabled());
    m_ui->valueField->setText(toQt(m_form->fieldText()));
    const QSignalBlocker blocker(m_ui->valueBox);
    m_ui->valueBox->setPlainText(toQt(m_form->boxText()));
    m_ui->question->setChecked(m_form->isYes());
}

void EditDlg::showLimits()
{
    m_ui->maximumLabel->setText(toQt(m_form->maximumText()));
    m_ui->maximumLabel->setVisible(!m_form->maximumText().empty());
    m_ui->minimumLabel->setText(toQt(m_form->minimumText()));
    m_ui->minimumLabel->setVisible(!m_form->minimumText().empty());
}

void EditDlg::showTickBoxes()
{
    showTickBox(*m_ui->saveGlobally, m_form->saveGlobally());
    showTickBox(*m_ui->saveInProject, m_form->saveInProject());
}

// A picture that cannot be read is as none.
void EditDlg::showPicture()
{
    CPictureEx& picture = *m_ui->picture;
    if (m_form->picture().empty() || !picture.load(m_form->picture()) || !picture.draw()) {
        compactLayout();
        return;
    }
    picture.setAccessibleName(toQt(corma::accessibleText(AccessibleText::picture)));
    picture.resize(picture.sizeHint());
    const QSize most = screen()->availableSize() / kMostOfScreen;
    m_ui->pictureArea->setMinimumSize(picture.size().boundedTo(most));
    m_ui->pictureArea->setMaximumHeight(picture.height());
}

void EditDlg::compactLayout()
{
    m_ui->pictureArea->hide();
}

// The height of a wrapped question follows from the width.
void EditDlg::fitSize()
{
    const int most = screen()->availableSize().width();
    const int width = std::max(minimumSizeHint().width(), std::min(kUsualWidth, most));
    resize(width, sizeHint().height());
    layout()->activate();
    fitQuestion();
    layout()->activate(); // lets go of the height that the window had to have before
    resize(width, sizeHint().height());
}

// A long question is scrolled when it would not fit on the screen.
void EditDlg::fitQuestion()
{
    const int most = screen()->availableSize().height() / kMostOfScreen;
    const int height = m_ui->question->heightForWidth(m_ui->questionArea->width());
    m_ui->questionArea->setFixedHeight(std::min(height, most));
}

void EditDlg::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    fitQuestion();
}

// --- what the user does --------------------------------------------------------------------------

QWidget& EditDlg::input() const
{
    switch (m_form->input()) {
    case Input::box:
        return *m_ui->valueBox;
    case Input::question:
        return *m_ui->question;
    case Input::optionList:
        return *m_ui->optionList;
    case Input::optionField:
        return *m_ui->optionField;
    case Input::field:
        break;
    }
    return *m_ui->valueField;
}

void EditDlg::focusInput()
{
    input().setFocus(Qt::OtherFocusReason);
    m_ui->valueField->selectAll();
    if (QLineEdit* const field = m_ui->optionField->lineEdit()) {
        field->selectAll();
    }
}

// A field of one line cannot take the line ends of what is pasted.
void EditDlg::fieldEdited(const QString& text)
{
    static const QRegularExpression lineEnds(QStringLiteral("\\r\\n|[\\r\\n\\x{2028}\\x{2029}]"));
    QString line = text;
    line.replace(lineEnds, QStringLiteral(" "));
    if (line != text) {
        const int behind = static_cast<int>(text.size()) - m_ui->valueField->cursorPosition();
        m_ui->valueField->setText(line);
        m_ui->valueField->setCursorPosition(static_cast<int>(line.size()) - behind);
    }
    m_form->setFieldText(line.toStdWString());
}

void EditDlg::browse()
{
    const QStringList filters = corma::filtersOf(m_form->fileFilter());
    if (const auto file = m_askFile(*this, m_form->browseStart(), filters)) {
        m_form->setFieldText(*file);
        m_ui->valueField->setText(toQt(*file));
    }
}

void EditDlg::accept()
{
    if (m_form->accept()) {
        QDialog::accept();
        return;
    }
    m_ui->valueField->setText(toQt(m_form->fieldText()));
    focusInput();
}
