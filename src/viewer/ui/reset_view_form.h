#pragma once
// frmResetView: stores the present view in one of the four saved view slots.

#include <QDialog>

#include "model/session.h"

namespace tessel {

class ResetViewForm : public QDialog {
  Q_OBJECT

 public:
  ResetViewForm(Session& session, QWidget* parent = nullptr);
};

}  // namespace tessel
