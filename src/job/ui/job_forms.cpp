#include "job/ui/job_forms.h"

#include <QDir>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStorageInfo>
#include <QComboBox>
#include <QTreeView>
#include <QVBoxLayout>
#include <utility>

#include "paint/qt_text.h"
#include "job/new_job.h"
#include "tools/user_tools.h"
#include "forms/ui/form_placing.h"
#include "forms/ui/named_widgets.h"

namespace tessel {

namespace {

QLabel* Wrapped(QWidget* parent, const QString& text) {
  auto* label = new QLabel(text, parent);
  label->setWordWrap(true);
  return label;
}

}  // namespace

StartupWizardForm::StartupWizardForm(Session& session, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmStartupWiz"));
  setWindowTitle(QStringLiteral("New job wizard"));
  auto* layout = new QVBoxLayout(this);
  auto* heading = new QLabel(QStringLiteral("TSL New job wizard"), this);
  QFont big = heading->font();
  big.setPointSize(big.pointSize() + 6);
  big.setBold(true);
  heading->setFont(big);
  layout->addWidget(heading);
  layout->addWidget(Wrapped(this, QStringLiteral("Tessel Field Records Manager (32 bit) ")));
  layout->addWidget(Wrapped(this, QStringLiteral("This Startup wizard will guide you through the process of setting up a "
                                                 "new Survey Project.")));
  layout->addWidget(Wrapped(this, QStringLiteral("In the next window, choose a directory or create a new one for your "
                                                 "project files.  Supply a job name without any extension.")));
  auto* row = new QHBoxLayout;
  row->addStretch();
  QPushButton* next = Button(this, "cmdNext", QStringLiteral("Next >"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  row->addWidget(next);
  row->addWidget(cancel);
  layout->addLayout(row);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(next, &QPushButton::clicked, this, [this, &session] {
    // The wizard hides itself before its file dialog, and stays hidden.
    hide();
    NewJobNext(session);
    accept();
  });
  resize(460, 260);
}

Wizard2Form::Wizard2Form(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmWiz2"));
  setWindowTitle(QStringLiteral("Startup Wizard"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Wrapped(this, QStringLiteral("Your new job has been setup.  You may now continue with data input or "
                                                 "IMPORT data from existing files")));
  QPushButton* go = Button(this, "cmdContinue", QStringLiteral("Continue"));
  layout->addWidget(go, 0, Qt::AlignRight);
  connect(go, &QPushButton::clicked, this, &QDialog::accept);
  resize(380, 140);
}

ReportForm::ReportForm(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QStringLiteral("frmReport"));
  setWindowTitle(QStringLiteral("Project Information"));
  auto* layout = new QVBoxLayout(this);
  text_ = new QPlainTextEdit(this);
  text_->setObjectName(QStringLiteral("txtReport"));
  layout->addWidget(text_);
  resize(520, 380);
}

void ReportForm::showEvent(QShowEvent* event) {
  text_->setPlainText(QStringLiteral("new text\n") + text_->toPlainText());
  if (!std::exchange(placed_, true)) PlaceBesideMainWindow(*this);
  QWidget::showEvent(event);
}

ToolboxForm::ToolboxForm(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session) {
  setObjectName(QStringLiteral("frmToolbox"));
  setWindowTitle(QStringLiteral("Tools"));
  auto* grid = new QGridLayout(this);
  for (int k = 1; k <= 12; ++k) {
    auto* button = new QPushButton(this);
    button->setObjectName(QStringLiteral("cmdTool%1").arg(k));
    grid->addWidget(button, (k - 1) / 2, (k - 1) % 2);
    connect(button, &QPushButton::clicked, this, [this, k] { ToolboxClick(session_, k); });
  }
  Reload();
}

void ToolboxForm::showEvent(QShowEvent* event) {
  if (!std::exchange(placed_, true)) PlaceBesideMainWindow(*this);
  QWidget::showEvent(event);
}

void ToolboxForm::Reload() {
  for (int k = 1; k <= 12; ++k) {
    auto* button = findChild<QPushButton*>(QStringLiteral("cmdTool%1").arg(k));
    const ToolButtonEntry& entry = session_.config.ToolButton[static_cast<std::size_t>(k - 1)];
    button->setText(entry.caption.empty() ? QStringLiteral("%1").arg(k) : FromBytes(entry.caption));
  }
}

BrowseForm::BrowseForm(const QString& start, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmBrowse"));
  setWindowTitle(QStringLiteral("Browse"));
  auto* layout = new QVBoxLayout(this);
  auto* drives = new QComboBox(this);
  drives->setObjectName(QStringLiteral("drvDrives"));
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) drives->addItem(volume.rootPath());
  layout->addWidget(drives);
  auto* lists = new QHBoxLayout;
  auto* folderModel = new QFileSystemModel(this);
  folderModel->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
  folderModel->setRootPath(QString());
  auto* folders = new QTreeView(this);
  folders->setObjectName(QStringLiteral("dirFolders"));
  folders->setModel(folderModel);
  for (int column = 1; column < folderModel->columnCount(); ++column) folders->hideColumn(column);
  auto* fileModel = new QFileSystemModel(this);
  fileModel->setFilter(QDir::Files);
  auto* files = new QListView(this);
  files->setObjectName(QStringLiteral("filFiles"));
  files->setModel(fileModel);
  lists->addWidget(folders);
  lists->addWidget(files);
  layout->addLayout(lists);
  auto* row = new QHBoxLayout;
  row->addWidget(new QLabel(QStringLiteral("Selected:"), this));
  selected_ = new QLineEdit(this);
  selected_->setObjectName(QStringLiteral("txtSelected"));
  row->addWidget(selected_);
  layout->addLayout(row);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  QPushButton* add = Button(this, "cmdAdd", QStringLiteral("Add program"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  buttons->addWidget(add);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);

  const auto showFolder = [folders, folderModel, files, fileModel](const QString& path) {
    files->setRootIndex(fileModel->setRootPath(path));
    folders->setCurrentIndex(folderModel->index(path));
  };
  connect(drives, &QComboBox::textActivated, this, showFolder);
  connect(folders, &QTreeView::clicked, this,
          [folderModel, showFolder](const QModelIndex& index) { showFolder(folderModel->filePath(index)); });
  // A click on a file puts folder, separator and file name in the selection.
  connect(files, &QListView::clicked, this, [this, fileModel](const QModelIndex& index) {
    selected_->setText(QDir::toNativeSeparators(fileModel->filePath(index)));
  });
  connect(add, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, [this] {
    selected_->clear();
    reject();
  });
  showFolder(start.isEmpty() ? QDir::homePath() : start);
  resize(560, 420);
}

QString BrowseForm::Selected() const { return selected_->text(); }

}  // namespace tessel
