#include "archives/ui/archive_forms.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "archives/apd_import.h"
#include "archives/lzh_commands.h"
#include "archives/zip_archive.h"
#include "archives/zip_commands.h"
#include "forms/ui/long_work.h"
#include "forms/ui/named_widgets.h"
#include "paint/qt_text.h"

namespace tessel {

namespace {

QLabel* Label(QWidget* parent, const char* text) {
  auto* label = new QLabel(FromBytes(text), parent);
  label->setWordWrap(true);
  return label;
}

QString StartFolder(const Session& session) {
  return session.JobFolder.empty() ? QDir::currentPath() : FromBytes(session.JobFolder);
}

QString FolderOf(const QString& path) {
  const QFileInfo info(path);
  return info.isDir() ? info.absoluteFilePath() : info.absolutePath();
}

QAction* AddAction(QMenu* menu, const char* name, const char* caption) {
  QAction* action = menu->addAction(FromBytes(caption));
  action->setObjectName(QString::fromLatin1(name));
  return action;
}

// A row of buttons pushed to the right.
QHBoxLayout* ButtonRow(std::initializer_list<QPushButton*> buttons) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (QPushButton* button : buttons) row->addWidget(button);
  return row;
}

}  // namespace

QTreeView* FolderTree(QWidget* parent, const char* name, const QString& pattern, const QString& start) {
  auto* model = new QFileSystemModel(parent);
  model->setRootPath(QDir::rootPath());
  if (pattern.isEmpty()) {
    model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
  } else {
    model->setFilter(QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot | QDir::Drives);
    model->setNameFilters({pattern});
    model->setNameFilterDisables(false);
  }
  auto* tree = new QTreeView(parent);
  tree->setObjectName(QString::fromLatin1(name));
  tree->setModel(model);
  for (int column = 1; column < model->columnCount(); ++column) tree->hideColumn(column);
  tree->header()->hide();
  const QModelIndex at = model->index(start);
  if (at.isValid()) {
    tree->setCurrentIndex(at);
    tree->scrollTo(at);
  }
  tree->setMinimumHeight(180);
  return tree;
}

QString CurrentPath(QTreeView* tree) {
  auto* model = qobject_cast<QFileSystemModel*>(tree->model());
  const QModelIndex at = tree->currentIndex();
  return model && at.isValid() ? model->filePath(at) : QString();
}

void SelectPath(QTreeView* tree, const QString& path) {
  auto* model = qobject_cast<QFileSystemModel*>(tree->model());
  if (!model) return;
  const QModelIndex at = model->index(path);
  if (at.isValid()) tree->setCurrentIndex(at);
}

// frmUnzip --------------------------------------------------------------------------------------

UnzipForm::UnzipForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmUnzip"));
  setWindowTitle(FromBytes(kUnzipTitle));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, "Select an existing zip file"));
  source_ = FolderTree(this, "filZip", FromBytes(kZipPattern), StartFolder(session));
  layout->addWidget(source_);
  layout->addWidget(Label(this, "Extract files to:"));
  target_ = FolderTree(this, "dirTarget", QString(), StartFolder(session));
  layout->addWidget(target_);
  QPushButton* newFolder = Button(this, "cmdNewFolder", QStringLiteral("New folder"));
  layout->addWidget(newFolder, 0, Qt::AlignLeft);
  setFolder_ = new QCheckBox(QStringLiteral("Set target folder as current Tessel working folder"), this);
  setFolder_->setObjectName(QStringLiteral("chkSetFolder"));
  convert_ = new QCheckBox(QStringLiteral("Convert LF to CRLF "), this);
  convert_->setObjectName(QStringLiteral("chkConvert"));
  layout->addWidget(setFolder_);
  layout->addWidget(convert_);
  QPushButton* extract = Button(this, "cmdExtract", QStringLiteral("Extract"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  layout->addLayout(ButtonRow({extract, cancel}));
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(newFolder, &QPushButton::clicked, this, [this] {
    const QString target = CurrentPath(target_);
    if (target.isEmpty()) return;
    const std::string made = UnzipNewFolder(session_, ToBytes(FolderOf(target)));
    if (!made.empty()) SelectPath(target_, FromBytes(made));
  });
  connect(extract, &QPushButton::clicked, this, [this] {
    const QString zip = CurrentPath(source_);
    const QString target = CurrentPath(target_);
    if (zip.isEmpty() || QFileInfo(zip).isDir() || target.isEmpty()) return;
    const std::string zipFile = ToBytes(QDir::toNativeSeparators(zip));
    const std::string folder = ToBytes(QDir::toNativeSeparators(FolderOf(target)));
    const bool setFolder = setFolder_->isChecked();
    const bool convert = convert_->isChecked();
    // A large archive is tested and extracted beside the form, with its progress at the form's foot.
    int code = -1;
    RunLongWork(*this, [&](Progress& progress) {
      code = UnzipCommand(session_, zipFile, folder, setFolder, convert, &progress);
    });
    if (code != -1) accept();
  });
  resize(480, 560);
}

void UnzipForm::Choose(const QString& zipFile, const QString& target) {
  SelectPath(source_, zipFile);
  SelectPath(target_, target);
}

// frmZipWiz1 ------------------------------------------------------------------------------------

ZipWizard1Form::ZipWizard1Form(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmZipWiz1"));
  setWindowTitle(FromBytes(kZipWizardTitle));
  auto* layout = new QVBoxLayout(this);
  auto* frame = new QGroupBox(QStringLiteral("Select Zip file operation to perform "), this);
  auto* options = new QVBoxLayout(frame);
  current_ = new QRadioButton(QStringLiteral("Zip current job"), frame);
  current_->setObjectName(QStringLiteral("optCurrent"));
  manual_ = new QRadioButton(QStringLiteral("Set Zip options manually"), frame);
  manual_->setObjectName(QStringLiteral("optManual"));
  current_->setChecked(true);
  options->addWidget(current_);
  options->addWidget(manual_);
  layout->addWidget(frame);
  layout->addWidget(Label(this, kZipWizardNote));
  QPushButton* next = Button(this, "cmdNext", QStringLiteral("Next -->"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  layout->addLayout(ButtonRow({next, cancel}));
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(next, &QPushButton::clicked, this, [this] {
    if (!ZipWizardNext(session_, current_->isChecked())) {
      manual_->setChecked(true);
      return;
    }
    hide();
    int result = 0;
    if (current_->isChecked()) {
      ZipWizard2Form page(session_, parentWidget());
      result = page.exec();
    } else {
      ZipWizard3Form page(session_, parentWidget());
      result = page.exec();
    }
    if (result == kZipWizardBack) {
      show();
    } else {
      done(result);
    }
  });
  resize(420, 240);
}

// frmZipWiz2 ------------------------------------------------------------------------------------

ZipWizard2Form::ZipWizard2Form(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmZipWiz2"));
  setWindowTitle(FromBytes(kZipCurrentTitle));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, "Choose a location for the new .zip file or select an existing one"));
  QTreeView* tree = FolderTree(this, "filZip", FromBytes(kZipPattern), StartFolder(session));
  layout->addWidget(tree);
  layout->addWidget(Label(this, "Current job will be zipped to :"));
  zipFile_ = new QLineEdit(FromBytes(ZipCurrentDefault(session)), this);
  zipFile_->setObjectName(QStringLiteral("txtZipFile"));
  layout->addWidget(zipFile_);
  QPushButton* back = Button(this, "cmdBack", QStringLiteral("<--- Back"));
  QPushButton* finish = Button(this, "cmdFinish", QStringLiteral("Finish"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  layout->addLayout(ButtonRow({back, finish, cancel}));
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(back, &QPushButton::clicked, this, [this] { done(kZipWizardBack); });
  connect(tree, &QTreeView::clicked, this, [this, tree] {
    const QString path = CurrentPath(tree);
    if (QFileInfo(path).isDir()) {
      zipFile_->setText(FromBytes(ZipCurrentInFolder(session_, ToBytes(QDir::toNativeSeparators(path)))));
    } else if (!path.isEmpty()) {
      zipFile_->setText(QDir::toNativeSeparators(path));
    }
  });
  connect(finish, &QPushButton::clicked, this, [this] {
    const std::string zipFile = ToBytes(zipFile_->text());
    RunLongWork(*this, [&](Progress& progress) { ZipCurrentJob(session_, zipFile, &progress); });
    accept();
  });
  resize(480, 460);
}

// frmZipWiz3 ------------------------------------------------------------------------------------

ZipWizard3Form::ZipWizard3Form(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmZipWiz3"));
  setWindowTitle(FromBytes(kZipWizardTitle));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, "Zip file to be created or modified:"));
  auto* nameRow = new QHBoxLayout;
  zipFile_ = new QLineEdit(this);
  zipFile_->setObjectName(QStringLiteral("txtZipFile"));
  QPushButton* browse = Button(this, "cmdBrowse", QStringLiteral("Browse"));
  QPushButton* create = Button(this, "cmdNew", QStringLiteral("New"));
  nameRow->addWidget(zipFile_);
  nameRow->addWidget(browse);
  nameRow->addWidget(create);
  layout->addLayout(nameRow);
  layout->addWidget(Label(this, "(full pathname used)"));
  layout->addWidget(Label(this, "Select Files to include:"));
  files_ = FolderTree(this, "filFiles", QStringLiteral("*"), StartFolder(session));
  layout->addWidget(files_);
  QPushButton* add = Button(this, "cmdAdd", QStringLiteral("Add to list"));
  QPushButton* wildcards = Button(this, "cmdWildcards", QStringLiteral("Use wildcards"));
  auto* addRow = new QHBoxLayout;
  addRow->addWidget(add);
  addRow->addWidget(wildcards);
  addRow->addStretch();
  layout->addLayout(addRow);
  layout->addWidget(Label(this, "List of files to include:  (to remove an item, delete it from list)"));
  items_ = new QPlainTextEdit(this);
  items_->setObjectName(QStringLiteral("txtItems"));
  items_->setMaximumHeight(90);
  layout->addWidget(items_);
  QPushButton* back = Button(this, "cmdBack", QStringLiteral("<--- Back"));
  QPushButton* finish = Button(this, "cmdFinish", QStringLiteral("Finish"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  layout->addLayout(ButtonRow({back, finish, cancel}));
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(back, &QPushButton::clicked, this, [this] { done(kZipWizardBack); });
  connect(browse, &QPushButton::clicked, this, [this] {
    SelectZipForm select(StartFolder(session_), this);
    if (select.exec() == QDialog::Accepted && !select.Selected().isEmpty()) zipFile_->setText(select.Selected());
  });
  connect(create, &QPushButton::clicked, this, [this] {
    ZipNewForm form(StartFolder(session_), this);
    if (form.exec() == QDialog::Accepted && !form.Selected().isEmpty()) zipFile_->setText(form.Selected());
  });
  connect(add, &QPushButton::clicked, this, [this] {
    const QString path = CurrentPath(files_);
    if (!path.isEmpty() && !QFileInfo(path).isDir()) {
      AddItem(FromBytes(ZipListItem(ToBytes(QDir::toNativeSeparators(path)))));
    }
  });
  connect(wildcards, &QPushButton::clicked, this, [this] {
    const auto pattern = session_.user.Input(kZipWildcardPrompt, kZipWizardTitle);
    if (!pattern || pattern->empty()) return;
    const QString folder = QDir::toNativeSeparators(FolderOf(CurrentPath(files_)));
    AddItem(FromBytes(ZipWildcardItem(ToBytes(folder), *pattern)));
  });
  connect(finish, &QPushButton::clicked, this, [this] {
    const std::string items = ToBytes(items_->toPlainText().replace(QLatin1Char('\n'), QLatin1Char(' ')));
    const std::string zipFile = ToBytes(zipFile_->text());
    bool finished = false;
    RunLongWork(*this, [&](Progress& progress) { finished = ZipManualFinish(session_, zipFile, items, &progress); });
    if (finished) accept();
  });
  resize(520, 600);
}

void ZipWizard3Form::AddItem(const QString& item) {
  QString text = items_->toPlainText().trimmed();
  if (!text.isEmpty()) text += QLatin1Char(' ');
  items_->setPlainText(text + item);
}

// frmSelectZip and frmZipNew --------------------------------------------------------------------

SelectZipForm::SelectZipForm(const QString& start, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmSelectZip"));
  setWindowTitle(FromBytes(kSelectZipTitle));
  auto* layout = new QVBoxLayout(this);
  tree_ = FolderTree(this, "filZip", FromBytes(kZipPattern), start);
  layout->addWidget(tree_);
  QPushButton* ok = Button(this, "cmdOK", QStringLiteral("OK"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  layout->addLayout(ButtonRow({ok, cancel}));
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  resize(420, 420);
}

QString SelectZipForm::Selected() const {
  const QString path = CurrentPath(tree_);
  return QFileInfo(path).isDir() ? QString() : QDir::toNativeSeparators(path);
}

ZipNewForm::ZipNewForm(const QString& start, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmZipNew"));
  setWindowTitle(FromBytes(kZipNewTitle));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, "Choose a drive and directory and provide a name for the new file."));
  tree_ = FolderTree(this, "dirFolder", QString(), start);
  layout->addWidget(tree_);
  layout->addWidget(Label(this, "Name for new .zip file (Without extension)  :"));
  name_ = new QLineEdit(this);
  name_->setObjectName(QStringLiteral("txtName"));
  layout->addWidget(name_);
  QPushButton* ok = Button(this, "cmdOK", QStringLiteral("OK"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  layout->addLayout(ButtonRow({ok, cancel}));
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  resize(420, 420);
}

QString ZipNewForm::Selected() const {
  const QString folder = CurrentPath(tree_);
  if (folder.isEmpty() || name_->text().trimmed().isEmpty()) return {};
  return FromBytes(ZipNewFile(ToBytes(QDir::toNativeSeparators(FolderOf(folder))), ToBytes(name_->text().trimmed())));
}

// frmAPDWiz1 ------------------------------------------------------------------------------------

ApdWizardForm::ApdWizardForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmAPDWiz1"));
  setWindowTitle(FromBytes(kApdCaption));
  auto* layout = new QVBoxLayout(this);
  QLabel* head = Label(this, kApdHead);
  QFont big = head->font();
  big.setPointSize(big.pointSize() + 4);
  big.setBold(true);
  head->setFont(big);
  layout->addWidget(head);
  layout->addWidget(Label(this, kApdInstruction));
  layout->addWidget(Label(this, kApdNameLabel));
  project_ = new QLineEdit(this);
  project_->setObjectName(QStringLiteral("txtProject"));
  project_->setReadOnly(true);
  layout->addWidget(project_);
  layout->addWidget(Label(this, kApdFilesLabel));
  files_ = new QPlainTextEdit(this);
  files_->setObjectName(QStringLiteral("txtFiles"));
  files_->setReadOnly(true);
  files_->setMaximumHeight(90);
  layout->addWidget(files_);
  progress_ = new QLabel(this);
  progress_->setObjectName(QStringLiteral("lblProgress"));
  layout->addWidget(progress_);
  QPushButton* browse = Button(this, "cmdBrowse", QStringLiteral("Browse"));
  finish_ = Button(this, "cmdFinish", QStringLiteral("Finish"));
  cancel_ = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  ok_ = Button(this, "cmdOK", QStringLiteral("OK"));
  ok_->hide();
  finish_->setEnabled(false);
  layout->addLayout(ButtonRow({browse, finish_, cancel_, ok_}));
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
  connect(browse, &QPushButton::clicked, this, [this] {
    if (const auto files = ApdBrowse(session_)) ShowProject(files->finishEnabled, files->lines);
  });
  connect(finish_, &QPushButton::clicked, this, [this] {
    const bool done = ApdFinish(session_, [this](const std::string& text) {
      progress_->setText(FromBytes(text));
      progress_->repaint();
    });
    if (!done) return;
    finish_->hide();
    cancel_->hide();
    ok_->show();
  });
  resize(520, 420);
}

void ApdWizardForm::ShowProject(bool finishEnabled, const std::vector<std::string>& files) {
  project_->setText(FromBytes(session_.JobName));
  QStringList lines;
  for (const auto& line : files) lines << FromBytes(line);
  files_->setPlainText(lines.join(QLatin1Char('\n')));
  finish_->setEnabled(finishEnabled);
}

// The menus -------------------------------------------------------------------------------------

void InstallArchivesForms(QMainWindow& window, Session& session) {
  Session* s = &session;
  QWidget* parent = &window;
  if (auto* file = window.findChild<QMenu*>(QStringLiteral("mnuFile"))) {
    // Before the printing entries, after the job's own.
    QAction* before = window.findChild<QAction*>(QStringLiteral("mnuFilePrintSetup"));
    auto* zip = new QMenu(FromBytes(kZipMenuCaption), file);
    zip->setObjectName(QStringLiteral("mnuZip"));
    QObject::connect(AddAction(zip, "mnuZipExtract", kZipExtractCaption), &QAction::triggered, parent, [s, parent] {
      UnzipForm form(*s, parent);
      form.exec();
    });
    QObject::connect(AddAction(zip, "mnuZipCreate", kZipCreateCaption), &QAction::triggered, parent, [s, parent] {
      ZipWizard1Form form(*s, parent);
      form.exec();
    });
    auto* lzh = new QMenu(FromBytes(kLzhMenuCaption), file);
    lzh->setObjectName(QStringLiteral("mnuLzh"));
    QObject::connect(AddAction(lzh, "mnuLzhExtract", kLzhExtractCaption), &QAction::triggered, parent,
                     [s] { LzhExtract(*s); });
    QAction* save = AddAction(lzh, "mnuLzhSave", kLzhSaveCaption);
    QAction* saveAs = AddAction(lzh, "mnuLzhSaveAs", kLzhSaveAsCaption);
    save->setEnabled(!session.JobBase.empty());
    saveAs->setEnabled(!session.JobBase.empty());
    QObject::connect(save, &QAction::triggered, parent, [s] { LzhSave(*s); });
    QObject::connect(saveAs, &QAction::triggered, parent, [s, &window] {
      if (LzhSaveAs(*s)) {
        window.raise();
        window.activateWindow();
      }
    });
    if (before) {
      file->insertMenu(before, zip);
      file->insertMenu(before, lzh);
      file->insertSeparator(before);
    } else {
      file->addMenu(zip);
      file->addMenu(lzh);
    }
  }
  if (auto* import = window.findChild<QMenu*>(QStringLiteral("mnuFileImport"))) {
    QObject::connect(AddAction(import, "mnuFileImportAPD", kApdMenuCaption), &QAction::triggered, parent,
                     [s, parent] {
                       ApdWizardForm form(*s, parent);
                       form.exec();
                     });
  }
  if (auto* reports = window.findChild<QMenu*>(QStringLiteral("mnuReports"))) {
    QObject::connect(AddAction(reports, "mnuReportsAPD", kApdCommandCaption), &QAction::triggered, parent,
                     [s] { ImportApdCommand(*s); });
  }
}

}  // namespace tessel
