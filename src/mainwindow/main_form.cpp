#include "mainwindow/main_form.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>

#include "decode/frm_decoded.h"
#include "mainwindow/small_widgets.h"
#include "mainwindow/text_box_keys.h"
#include "ui_main_form.h"

// The pictures are compiled into the GUI library; a static library's resources must be
// registered by hand (and only from outside any namespace).
static void RegisterPictures() { Q_INIT_RESOURCE(resources); }

namespace lumidot {
namespace {

constexpr int kKeyCodeShift = 16;
constexpr int kKeyCodeCtrl = 17;

// Key codes as the handlers know them: Shift and Ctrl as 16 and 17, letters and digits
// as their upper-case character codes (which Qt's key codes already are).
int KeyCode(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Shift: return kKeyCodeShift;
        case Qt::Key_Control: return kKeyCodeCtrl;
        default: return event.key();
    }
}

QString VersionCaption() {
    return QStringLiteral(" (v%1.%2.%3)")
        .arg(LUMIDOT_VERSION_MAJOR)
        .arg(LUMIDOT_VERSION_MINOR)
        .arg(LUMIDOT_VERSION_PATCH);
}

}  // namespace

MainForm::MainForm(Platform& platform, QString programFolder, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                          Qt::WindowCloseButtonHint),
      ui(std::make_unique<Ui::MainForm>()),
      platform_(platform),
      programFolder_(std::move(programFolder)) {
    RegisterPictures();
    ApplyProgramLook();
    ui->setupUi(this);
    // The separator's designed text is one space, which the form compiler drops as blank.
    ui->txtHexSep->setText(QStringLiteral(" "));
    setFixedSize(600, 528);
    setWindowIcon(LoadPicture(QStringLiteral(":/icon.xpm")));

    for (QLineEdit* box : {ui->txtTextIn, ui->txtHexPrefix, ui->txtHexSuffix, ui->txtHexSep}) {
        box->setFont(TextBoxFont());
    }
    ui->txtSysExOut->setFont(TextBoxFont());
    QPalette paneColours = ui->txtSysExOut->palette();
    paneColours.setColor(QPalette::Base, paneColours.color(QPalette::Button));
    ui->txtSysExOut->setPalette(paneColours);

    QPalette grey = ui->Shape1->palette();
    grey.setColor(QPalette::Window, QColor(128, 128, 128));
    ui->Shape1->setPalette(grey);

    ui->cmdSysExDecode->setPicture(QStringLiteral(":/decode.xpm"));
    ui->cmdSysExCopy->setPicture(QStringLiteral(":/copy.xpm"));
    SetButtonFace(ui->cmdSysExDecode, QColor(255, 255, 128));
    SetButtonFace(ui->cmdSysExCopy, QColor(128, 255, 128));

    // The frame's arrow notes start hidden; the first count shows the right one.
    ui->frmTextInArrow16->hide();
    ui->frmTextInArrow32->hide();

    connectOutput();
    connectGraphicEditor();
    setUpKeyboardAndMouse();
}

MainForm::~MainForm() {
    // The children are torn down after this; no event of theirs may reach the filter.
    qApp->removeEventFilter(this);
    ui->frmFrameDraw->removeEventFilter(this);
}

void MainForm::Form_Load() {
    show();
    // Centred with its title bar and borders, now that it has them.
    QRect frame = frameGeometry();
    frame.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    move(frame.topLeft());

    setWindowTitle(windowTitle() + VersionCaption());
    buildPixelGrid();
    FDPageNum = ui->udPageNum->value();
    txtTextIn_Change();
    selectMode(ui->optSEGStore);
    LoadMemoryAndSettings();
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
    // Key preview: every key press in this window passes through eventFilter first.
    qApp->installEventFilter(this);

    // The pointer leaving the cells is seen on the window's and the graphic frame's own
    // surfaces; the grey rectangle behind the cells lets the frame see it too. Any other
    // control keeps the move to itself, so the last cell stays the one under the mouse.
    setMouseTracking(true);
    ui->frmFrameDraw->setMouseTracking(true);
    ui->frmFrameDraw->installEventFilter(this);
    ui->Shape1->setAttribute(Qt::WA_TransparentForMouseEvents);
    for (QWidget* child : findChildren<QWidget*>()) {
        if (child != ui->frmFrameDraw && child != ui->Shape1 && child != ui->lblFDPixelBase) {
            child->setAttribute(Qt::WA_NoMousePropagation);
        }
    }
}

bool MainForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui->frmFrameDraw && event->type() == QEvent::MouseMove) {
        FDSurfaceMouseMove();
        return false;
    }
    if (event->type() != QEvent::KeyPress) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || widget->window() != this) return false;
    // A key press travels up from the focused control to its parents; handle it once.
    QWidget* focus = focusWidget();
    if (widget != (focus ? focus : this)) return false;

    auto* key = static_cast<QKeyEvent*>(event);
    const int keyCode = KeyCode(*key);
    const int shift = ShiftState(key->modifiers());
    Form_KeyDown(keyCode, shift);

    if (widget == ui->txtTextIn) {
        HandleTextBoxKeys(platform_, ui->txtTextIn, keyCode, shift);
    } else if (widget == ui->txtSysExOut) {
        txtSysExOut_KeyDown(keyCode, shift);
    } else {
        return false;
    }
    // Ctrl+C has just put the exact selection on the clipboard through the retrying writer;
    // the box's own copy would write it a second time. Ctrl+Insert stays the box's own.
    return shift == kCtrlMask && keyCode == Qt::Key_C;
}

void MainForm::mouseMoveEvent(QMouseEvent* event) {
    FDSurfaceMouseMove();
    QWidget::mouseMoveEvent(event);
}

// --- LCD text entry ---------------------------------------------------------

void MainForm::txtTextIn_Change() {
    selectMode(ui->optSEText);
    AutoSetSysExText();

    const int length = ui->txtTextIn->text().length();
    const int withoutScrolling = 16 - length;
    ui->lblTextInRem16->setText(QString::number(withoutScrolling));
    ui->lblTextInRem32->setText(QString::number(32 - length));

    const bool scrolls = withoutScrolling < 0;
    const QColor red(255, 0, 0);
    const QColor green(0, 160, 0);
    auto colour = [](QWidget* label, const QColor& c) {
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, c);
        label->setPalette(palette);
    };
    colour(ui->lblTextInRem16, scrolls ? red : green);
    colour(ui->lblTextInRem32, scrolls ? green : red);
    ui->frmTextInArrow16->setVisible(!scrolls);
    ui->frmTextInArrow32->setVisible(scrolls);
}

void MainForm::setLcdText(const std::string& text) {
    ui->txtTextIn->setText(QString::fromStdString(text));
}

std::string MainForm::lcdText() const { return ui->txtTextIn->text().toStdString(); }

void MainForm::selectStoreMode() { selectMode(ui->optSEGStore); }

void MainForm::selectDisplayMode() { selectMode(ui->optSEGDisplay); }

}  // namespace lumidot
