// frmConfig on the offscreen platform: its texts and lists, the fields filled from the settings,
// Save writing Tessel.cfg that the next start reads back, values outside the lists kept, OK
// changing only the running settings (programs chosen through Browse included), and the runner
// of Windows programs kept in tessel-tools.ini, out of Tessel.cfg.

#include <string>
#include <utility>
#include <vector>

#include "job/ui/config_dialog.h"
#include "model/config.h"
#include "form_test_support.h"

namespace tessel {
namespace {

// A session of its own on recording ports, with a temporary tool folder.
struct ToolsBench : Bench {
  ToolsBench() { session.ToolFolder = tools.path().toStdString(); }
  QString CfgPath() const { return tools.filePath(QStringLiteral("Tessel.cfg")); }
  QTemporaryDir tools;
};

template <typename W = QWidget>
W* Find(QWidget& parent, const char* name) {
  W* widget = parent.findChild<W*>(QString::fromLatin1(name));
  if (!widget) qFatal("no widget %s", name);
  return widget;
}

void Click(QWidget& parent, const char* name) { Find<QAbstractButton>(parent, name)->click(); }

// The property through which a field shows its value.
const char* ValueOf(const QWidget* field) {
  if (qobject_cast<const QComboBox*>(field)) return "currentIndex";
  if (qobject_cast<const QLineEdit*>(field)) return "text";
  if (qobject_cast<const QAbstractButton*>(field)) return "checked";
  return "value";
}

// A setting of every kind changed from its default, with single-byte text that the fields show
// as Latin-1; and the fields as they show it.
Config Changed() {
  Config c{.PtSizeCor = 7, .CorColor = 12, .PtSizeCtrl = 3, .CtrlColor = 0, .LineTypeLSA = 2, .LsaColor = 15,
           .LineTypeLXN = 4, .LxnColor = 6, .PanPercent = 12.5f, .ZoomPercent = 30.0f, .chkLXN = 0,
           .EditorPath = "/usr/bin/vi", .chkLinesLSA = 0, .chkLinesLXN = 1, .chkLinesRAW = 1, .chkRPO = 1,
           .chkPoints = 0, .chkControl = 0, .chkParcels = 1, .BackgroundMode = 2};
  c.ToolButton[2] = {"/opt/tools/three", "\xC9" "dit"};
  c.ToolButton[11] = {"/opt/tools/twelve", "Twelve"};
  return c;
}
std::vector<std::pair<const char*, QVariant>> ChangedFields() {
  return {{"PtSizeCor", 7}, {"CorColor", 12}, {"PtSizeCtrl", 3}, {"CtrlColor", 0}, {"LineTypeLSA", 2},
          {"LsaColor", 15}, {"LineTypeLXN", 4}, {"LxnColor", 6}, {"PanPercent", 12.5}, {"ZoomPercent", 30.0},
          {"chkLXN", false}, {"EditorPath", "/usr/bin/vi"}, {"txtPath3", "/opt/tools/three"},
          {"txtCaption3", QString::fromUtf8("\xC3\x89" "dit")}, {"txtPath12", "/opt/tools/twelve"},
          {"txtCaption12", "Twelve"}, {"chkLinesLSA", false}, {"chkLinesLXN", true}, {"chkLinesRAW", true},
          {"chkRPO", true}, {"chkPoints", false}, {"chkControl", false}, {"chkParcels", true},
          {"optBackground2", true}, {"optBackground1", false}};
}

// Shows the dialog and types the settings of Changed() into the fields, as a user would.
void EnterChanged(ConfigDialog& d) {
  d.show();
  for (const auto& [name, value] : ChangedFields()) Find(d, name)->setProperty(ValueOf(Find(d, name)), value);
}

}  // namespace

class ConfigDialogTest : public QObject {
  Q_OBJECT

 private slots:
  void textsAndLists() {
    ToolsBench b;
    ConfigDialog d(b.session);
    QCOMPARE(d.objectName() + ": " + d.windowTitle(), QStringLiteral("frmConfig: Configuration Options"));
    const auto items = [&d](const char* name) {
      QStringList texts;
      for (int i = 0; i < Find<QComboBox>(d, name)->count(); ++i) texts << Find<QComboBox>(d, name)->itemText(i);
      return texts.join(QStringLiteral(", "));
    };
    for (const char* name : {"CorColor", "CtrlColor", "LsaColor", "LxnColor"}) {
      QCOMPARE(items(name), QStringLiteral("0 - Black, 1 - Blue, 2 - Green, 3 - Cyan, 4 - Red, 5 - Magenta, "
                                           "6 - Yellow, 7 - White, 8 - Gray, 9 - Light Blue, 10 - Light Green, "
                                           "11 - Light Cyan, 12 - Light Red, 13 - Light Magenta, 14 - Light Yellow, "
                                           "15 - Bright White"));
    }
    for (const char* name : {"LineTypeLSA", "LineTypeLXN"}) {
      QCOMPARE(items(name), QStringLiteral("0- Solid, 1- Dash, 2- Dot, 3- Dash-Dot, 4- Dash-Dot-Dot, 5- Inside Fill"));
    }
    QStringList seen;  // captions, labels, group titles and tab texts
    for (auto* w : d.findChildren<QWidget*>()) seen << w->property("text").toString() + w->property("title").toString();
    auto* tabs = d.findChild<QTabWidget*>();
    for (int i = 0; i < tabs->count(); ++i) seen << tabs->tabText(i);
    for (const char* text :
         {"Setup user-defined program buttons # 1-6", "Setup User Defined program buttons # 7 - 12",
          "Default Viewing Setup", "Background Color / Text", "Text Editor", "Point Size for COR file",
          "Point Size for Control Points", "Pan Increment", "Zoom Increment", "Dark Text on Light Background",
          "Light Text on Dark Background", "load LXN lines", "LSA Lines", "LXN Lines", "RAW Lines",
          "Raw Polygons", "Points", "Control Points", "Parcels", "OK", "Save", "Cancel", "Restore Defaults", "Browse...",
          "Hint: Large Zoom Increments work well for mouse zooming, Smaller Values work well for \"GoTo\" "
          "functions.  Varying these can result in a wide variey of effects.   Pan Increments have no effect on "
          "mouse panning, only apply to keyboard and menu pan options.",
          "Choose \"OK\" for temporary change, \"Save\" to store a configuration file which will be used next "
          "time you start the application."}) {
      QVERIFY2(seen.contains(QString::fromLatin1(text)), text);
    }
  }

  void saveWritesWhatTheNextStartReads() {
    ToolsBench b;
    ConfigDialog d(b.session);
    EnterChanged(d);
    QCOMPARE(Find<QLineEdit>(d, "txtToolRunner")->text(), QStringLiteral("wine"));
    Find<QLineEdit>(d, "txtToolRunner")->setText(QStringLiteral(" /opt/wine 9/bin/wine "));
    Click(d, "cmdSave");
    QVERIFY(d.result() == QDialog::Accepted && !d.isVisible());
    QCOMPARE(b.session.config, Changed());
    QCOMPARE(b.session.toolRunner, std::string("/opt/wine 9/bin/wine"));
    // Tessel.cfg holds the described lines alone; the runner has its own file.
    const QString alone = b.tools.filePath(QStringLiteral("alone.cfg"));
    WriteConfig(alone.toStdString(), Changed());
    QCOMPARE(Bytes(b.CfgPath()), Bytes(alone));
    QCOMPARE(Bytes(b.tools.filePath(QStringLiteral("tessel-tools.ini"))), QByteArray("runner=/opt/wine 9/bin/wine\r\n"));
    Session next(b.user, b.canvas, b.processes);
    next.ToolFolder = b.session.ToolFolder;
    MainFormLoad(next);
    QCOMPARE(next.config, Changed());
    QCOMPARE(next.toolRunner, std::string("/opt/wine 9/bin/wine"));
    ConfigDialog shown(next);
    shown.show();
    QCOMPARE(Find<QLineEdit>(shown, "txtToolRunner")->text(), QStringLiteral("/opt/wine 9/bin/wine"));
  }

  void okAppliesWhatWasEnteredOrBrowsedAndWritesNothing() {
    ToolsBench b;
    ConfigDialog d(b.session);
    d.SetProgramChooser([](int k, const QString&) { return k == 1 ? QString() : QStringLiteral("/b/%1").arg(k); });
    EnterChanged(d);
    // Entry 1 is cancelled; 14 is the runner of Windows programs.
    for (const char* browse : {"cmdBrowse7", "cmdBrowse13", "cmdBrowse1", "cmdBrowseRunner"}) Click(d, browse);
    Click(d, "cmdOK");
    QVERIFY(d.result() == QDialog::Accepted && !d.isVisible());
    QCOMPARE(b.session.toolRunner, std::string("/b/14"));
    QVERIFY(!QFile::exists(b.tools.filePath(QStringLiteral("tessel-tools.ini"))));
    Config expected = Changed();
    expected.ToolButton[6].path = "/b/7";
    expected.EditorPath = "/b/13";
    QCOMPARE(b.session.config, expected);
    QCOMPARE(b.user.toolButtons.size(), std::size_t{3});  // applied
    QVERIFY(!QFile::exists(b.CfgPath()));
    // Shown again, the fields hold the settings; values outside the lists, ranges and decimals
    // come back as they were.
    d.show();
    for (const auto& [name, value] : ChangedFields()) {
      if (std::string(name) != "txtPath7" && std::string(name) != "EditorPath") {
        QVERIFY2(Find(d, name)->property(ValueOf(Find(d, name))) == value, name);
      }
    }
    const Config odd{.PtSizeCor = -3, .CorColor = 20, .LineTypeLXN = 9, .ZoomPercent = 1.23456f, .BackgroundMode = 3};
    d.Fill(odd);
    QCOMPARE(d.Collect(), odd);
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::ConfigDialogTest)
#include "config_dialog_test.moc"
