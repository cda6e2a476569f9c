#pragma once
// The forms and menu entries of the subsystems, added to the main window once its own menus
// stand. Each subsystem's form library offers one installer that finds the menus it extends by
// their object names; this is the one place that calls them.

#include <QMainWindow>

#include "model/session.h"

namespace tessel {

void InstallSubsystemForms(QMainWindow& window, Session& session);

}  // namespace tessel
