#include "help/ui/help_forms.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessel {
namespace {

QString LicenceText() {
  EnsureManualResource();
  QFile file(QStringLiteral(":/LICENSE"));
  if (!file.open(QIODevice::ReadOnly)) return QString();
  return QString::fromUtf8(file.readAll());
}

QLabel* Label(QWidget* parent, const char* name, const QString& text) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(QString::fromLatin1(name));
  label->setWordWrap(true);
  return label;
}

QAction* AddEntry(QMenu* menu, const char* name, const QString& caption) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(QString::fromLatin1(name));
  return action;
}

}  // namespace

AboutForm::AboutForm(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmAbout"));
  setWindowTitle(QStringLiteral("About Tessel"));
  const QString licence = LicenceText();
  auto* layout = new QVBoxLayout(this);
  QLabel* name = Label(this, "lblTitle", QStringLiteral("Tessel"));
  QFont big = name->font();
  big.setPointSize(big.pointSize() * 2);
  big.setBold(true);
  name->setFont(big);
  layout->addWidget(name);
  layout->addWidget(Label(this, "lblDescription", QStringLiteral("Measurement records of the public land survey")));
  layout->addWidget(Label(this, "lblVersion", QStringLiteral("Version %1").arg(QStringLiteral(TESSEL_VERSION))));
  layout->addWidget(Label(this, "lblQt",
                          QStringLiteral("Built with Qt %1, running on Qt %2").arg(QStringLiteral(QT_VERSION_STR),
                                                                                  QString::fromLatin1(qVersion()))));
  // The licence's first line names it; the whole text follows.
  layout->addWidget(Label(this, "lblLicence",
                          QStringLiteral("Licence: %1").arg(licence.section(QLatin1Char('\n'), 0, 0).trimmed())));
  auto* text = new QPlainTextEdit(licence, this);
  text->setObjectName(QStringLiteral("txtLicence"));
  text->setReadOnly(true);
  text->setMinimumSize(520, 220);
  layout->addWidget(text, 1);
  layout->addWidget(Label(this, "lblQtLicence",
                          QStringLiteral("Qt is used under the GNU Lesser General Public License version 3.")));
  auto* ok = new QPushButton(QStringLiteral("OK"), this);
  ok->setObjectName(QStringLiteral("cmdOK"));
  ok->setDefault(true);
  layout->addWidget(ok, 0, Qt::AlignRight);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

HelpController::HelpController(QMainWindow& window) : QObject(&window), main_(window) {
  qApp->installEventFilter(this);
}

HelpController::~HelpController() = default;

HelpWindow& HelpController::Open() {
  QWidget* owner = QApplication::activeModalWidget();
  if (!owner) owner = &main_;
  if (!help_) {
    help_ = new HelpWindow(owner);
  } else if (help_->parentWidget() != owner) {
    help_->setParent(owner, Qt::Window);
  }
  help_->show();
  help_->raise();
  help_->activateWindow();
  return *help_;
}

void HelpController::ContextHelp(QWidget* widget) {
  HelpWindow& help = Open();
  for (QWidget* w = widget; w; w = w->parentWidget()) {
    const QString name = w->objectName();
    if (!name.isEmpty() && FindFormSection(help.pages(), name.toStdString())) {
      help.ShowForm(name);
      return;
    }
  }
  help.ShowContents();
}

bool HelpController::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_F1 || (key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  // The widget the key went to; the focused widget or the active window when it was none.
  QWidget* widget = qobject_cast<QWidget*>(watched);
  if (!widget) widget = QApplication::focusWidget();
  if (!widget) widget = QApplication::activeModalWidget();
  if (!widget) widget = QApplication::activeWindow();
  if (!widget) widget = &main_;
  ContextHelp(widget);
  return true;
}

void InstallHelpForms(QMainWindow& window, Session&) {
  auto* controller = new HelpController(window);
  controller->setObjectName(QStringLiteral("HelpController"));
  QMenu* menu = window.menuBar()->addMenu(QStringLiteral("&Help"));
  menu->setObjectName(QStringLiteral("mnuHelp"));
  QObject::connect(AddEntry(menu, "mnuHelpContents", QStringLiteral("&Contents")), &QAction::triggered, controller,
                   [controller] { controller->Open().ShowContents(); });
  QObject::connect(AddEntry(menu, "mnuHelpSearch", QStringLiteral("&Search")), &QAction::triggered, controller,
                   [controller] {
                     HelpWindow& help = controller->Open();
                     if (auto* field = help.findChild<QLineEdit*>(QStringLiteral("txtSearch"))) field->setFocus();
                   });
  menu->addSeparator();
  QObject::connect(AddEntry(menu, "mnuHelpAbout", QStringLiteral("&About Tessel")), &QAction::triggered, &window,
                   [&window] {
                     AboutForm about(&window);
                     about.exec();
                   });
}

}  // namespace tessel
