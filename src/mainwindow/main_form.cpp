#include "mainwindow/main_form.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "codec/code_page.h"
#include "decode/frm_decoded.h"
#include "editor/edit_history.h"
#include "editor/grid_input.h"
#include "editor/picture_actions.h"
#include "mainwindow/clipboard_access.h"
#include "mainwindow/file_actions.h"
#include "mainwindow/look.h"
#include "mainwindow/midi_menu.h"
#include "mainwindow/program_menus.h"
#include "mainwindow/text_box_keys.h"
#include "storage/storage_session.h"
#include "ui_main_form.h"

// The pictures are compiled into the GUI library; a static library's resources must be
// registered by hand (and only from outside any namespace).
static void RegisterPictures() {
    Q_INIT_RESOURCE(resources);
}

namespace lumidot {
namespace {

QString VersionCaption() {
    return QStringLiteral(" (v%1.%2.%3)")
        .arg(LUMIDOT_VERSION_MAJOR)
        .arg(LUMIDOT_VERSION_MINOR)
        .arg(LUMIDOT_VERSION_PATCH);
}

}  // namespace

MainForm::MainForm(Platform& platform, QString programFolder, QWidget* parent, std::string codePage)
    : QWidget(parent, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                          Qt::WindowCloseButtonHint),
      ui(std::make_unique<Ui::MainForm>()),
      platform_(platform),
      model_(codePage.empty() ? SystemAnsiCodePage() : std::move(codePage)),
      programFolder_(std::move(programFolder)) {
    RegisterPictures();
    ApplyProgramLook();
    // The designed window is the client area, exactly as drawn; the menu bar sits above it.
    client_ = new QWidget(this);
    ui->setupUi(client_);
    client_->setObjectName(QStringLiteral("clientArea"));
    client_->setFixedSize(kClientSize);
    setObjectName(QStringLiteral("MainForm"));
    setWindowTitle(client_->windowTitle());
    menuBar_ = new QMenuBar(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setMenuBar(menuBar_);
    layout->addWidget(client_);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    // The separator's designed text is one space, which the form compiler drops as blank.
    ui->txtHexSep->setText(QStringLiteral(" "));
    setWindowIcon(LoadPicture(QStringLiteral(":/icon.xpm")));

    for (QLineEdit* box : {ui->txtTextIn, ui->txtHexPrefix, ui->txtHexSuffix, ui->txtHexSep}) {
        box->setFont(TextBoxFont());
    }
    StyleReadOnlyPane(ui->txtSysExOut);
    SetBackgroundColour(ui->Shape1, QColor(128, 128, 128));

    ui->cmdSysExDecode->setPicture(QStringLiteral(":/decode.xpm"));
    ui->cmdSysExCopy->setPicture(QStringLiteral(":/copy.xpm"));
    ui->cmdSysExDecode->setFace(QColor(255, 255, 128));
    ui->cmdSysExCopy->setFace(QColor(128, 255, 128));

    // The frame's arrow notes start hidden; the first count shows the right one.
    ui->frmTextInArrow16->hide();
    ui->frmTextInArrow32->hide();

    model_.setCopier([this](const QString& text) { SetClipboardText(platform_, text, this); });
    history_ = std::make_unique<EditHistory>(model_, [this] { refreshView(); });
    connectOutput();
    connectGraphicEditor();
    menus_ = AddProgramMenus(*this);
    files_ = new FileActions(*this);
    midi_ = std::make_unique<MidiMenu>(*this);
    pictures_ = new PictureActions(*this);
    setUpKeyboardAndMouse();
    history_->watch(this);
}

MainForm::~MainForm() {
    // The helpers that watch the whole application for the window (its keys and pointer,
    // dropped files and pictures) go first: they would otherwise see the events of the
    // children torn down after this, when only the QWidget part of the window is left.
    gridInput_.reset();
    delete pictures_;
    delete files_;
}

void MainForm::Form_Load() {
    show();
    // Centred with its title bar and borders, now that it has them.
    CentreOnScreen(this);

    setWindowTitle(windowTitle() + VersionCaption());
    buildPixelGrid();
    model_.pages().open(ui->udPageNum->value());
    txtTextIn_Change();
    selectMode(ui->optSEGStore);
    LoadMemoryAndSettings();
    refreshView();
}

void MainForm::closeEvent(QCloseEvent* event) {
    if (!closing_) {
        closing_ = true;
        Form_Unload();
    }
    event->accept();
}

void MainForm::Form_Unload() {
    SaveMemoryAndSettings();
    // Nothing outlives the main window, not even a dialog kept hidden for its next use.
    if (pageCopy_) pageCopy_->hide();
    if (decoded_) decoded_->hide();
    QCoreApplication::quit();
}

void MainForm::setUpKeyboardAndMouse() {
    gridInput_ = std::make_unique<GridInput>(*this);
    new TextBoxKeys(platform_, ui->txtTextIn);
    new TextBoxKeys(platform_, ui->txtSysExOut,
                    [this](int keyCode, int shift) { txtSysExOut_KeyDown(keyCode, shift); });
}

// --- the view ----------------------------------------------------------------------------

void MainForm::refreshView() {
    if (viewHeld_) return;
    const PageModel& pages = model_.pages();
    ui->lblFDPixelBase->setCells(pages.pixels());
    if (ui->udPageNum->value() != pages.current()) {
        const QSignalBlocker quiet(ui->udPageNum);
        ui->udPageNum->setValue(pages.current());
    }
    showMode();

    const auto showText = [](QLineEdit* box, const QString& text) {
        if (box->text() == text) return;
        const QSignalBlocker quiet(box);
        box->setText(text);
    };
    showText(ui->txtTextIn, model_.lcdText());
    showLcdCounters();
    const ByteLayout& layout = model_.layout();
    showText(ui->txtHexPrefix, layout.prefix);
    showText(ui->txtHexSuffix, layout.suffix);
    showText(ui->txtHexSep, layout.separator);

    if (shownPaneVersion_ != model_.paneVersion()) {
        shownPaneVersion_ = model_.paneVersion();
        if (ui->txtSysExOut->text() != model_.pane()) ui->txtSysExOut->setText(model_.pane());
    }
}

void MainForm::showMode() {
    QPushButton* selected = nullptr;
    switch (model_.mode()) {
        case OutputMode::Store:
            selected = ui->optSEGStore;
            break;
        case OutputMode::Display:
            selected = ui->optSEGDisplay;
            break;
        case OutputMode::Text:
            selected = ui->optSEText;
            break;
        case OutputMode::None:
            break;
    }
    if (selected != nullptr) {
        if (!selected->isChecked()) selected->setChecked(true);
        return;
    }
    // An exclusive group refuses to leave nothing checked; lift that for the moment.
    for (QPushButton* button : {ui->optSEGStore, ui->optSEGDisplay, ui->optSEText}) {
        if (!button->isChecked()) continue;
        button->setAutoExclusive(false);
        button->setChecked(false);
        button->setAutoExclusive(true);
    }
}

// --- LCD text entry ---------------------------------------------------------

void MainForm::txtTextIn_Change() {
    model_.lcdTextChanged();
    refreshView();
}

void MainForm::showLcdCounters() {
    const int length = int(model_.lcdText().length());
    if (length == shownLcdLength_) return;
    shownLcdLength_ = length;
    const int withoutScrolling = 16 - length;
    ui->lblTextInRem16->setText(QString::number(withoutScrolling));
    ui->lblTextInRem32->setText(QString::number(32 - length));

    const bool scrolls = withoutScrolling < 0;
    const QColor red(255, 0, 0);
    const QColor green(0, 160, 0);
    SetTextColour(ui->lblTextInRem16, scrolls ? red : green);
    SetTextColour(ui->lblTextInRem32, scrolls ? green : red);
    ui->frmTextInArrow16->setVisible(!scrolls);
    ui->frmTextInArrow32->setVisible(scrolls);
}

}  // namespace lumidot
