#pragma once
// The forms of the CAMA linking: frmQueryTwp (the township query of the import), frmCama (the
// CAMA record of a picked link record), frmCamaParcel (the section's CAMA records to apply) and
// frmUnusedCama (the records no link carries), and their menu entries. They show what the
// headless linking decides and forward their buttons to it.

#include <QDialog>
#include <QWidget>

#include <memory>

#include "cama/cama_import.h"
#include "forms/ui/session_view.h"
#include "model/session.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QPlainTextEdit;

namespace tessel {

// frmQueryTwp, "Query CAMA Database": the six fields of the township-and-range code.
class QueryTwpForm : public QDialog {
  Q_OBJECT
 public:
  QueryTwpForm(const TownshipQuery& defaults, QWidget* parent);
  TownshipQuery Fields() const;

 private:
  QLineEdit* fields_[6];
};

// frmCama, "Cama Parcel".
class CamaForm : public QWidget {
  Q_OBJECT
 public:
  CamaForm(Session& session, QMainWindow& window);

 public slots:
  // Shows the session's link tables as they stand.
  void Reload();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  Session& session_;
  QMainWindow& window_;
  QPlainTextEdit* text_;
  QLabel* labels_[3];
  std::unique_ptr<SessionView> view_;
};

// frmCamaParcel, "Cama Parcels for Section ..".
class CamaParcelForm : public QWidget {
  Q_OBJECT
 public:
  CamaParcelForm(Session& session, QMainWindow& window);

 public slots:
  // Shows the session's link tables as they stand.
  void Reload();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void ShowLabels();

  Session& session_;
  QMainWindow& window_;
  QListWidget* list_;
  QLabel* labels_[3];
  std::unique_ptr<SessionView> view_;
};

// frmUnusedCama, "CAMA Database".
class UnusedCamaForm : public QWidget {
  Q_OBJECT
 public:
  UnusedCamaForm(Session& session, QWidget* parent);

 public slots:
  // Shows the session's link tables as they stand.
  void Reload();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  Session& session_;
  QListWidget* list_;
  std::unique_ptr<SessionView> view_;
};

// The entries of the Attributes and View menus and the forms behind them.
void InstallCamaForms(QMainWindow& window, Session& session);

}  // namespace tessel
