#pragma once
// Where ToolFolder is: the folder of Tessel.cfg, Tessel.hst, ts$002.cfg, the window places, the
// suite's tools and the master copies of the support files.
//
// A program in a folder of its own keeps them beside itself. An installed program cannot: an
// ordinary user may not write to /usr/bin, and the folder is shared by every user and every
// other program. So a program whose folder is an install prefix's bin (with share/tessel beside
// it, as the package lays it out) or cannot be written keeps them in the user's data folder,
// $XDG_DATA_HOME/tessel (~/.local/share/tessel), made on first start and given the master copies.

#include <functional>
#include <string>

namespace tessel {

// One environment variable's value, or nullptr when it is not set.
using EnvironmentLookup = std::function<const char*(const char*)>;

// The user's own tool folder: $XDG_DATA_HOME/tessel, else %LOCALAPPDATA%\Tessel (Windows),
// else $HOME/.local/share/tessel. Relative values are ignored, as the XDG rules ask; empty when
// none is set.
std::string UserToolFolder(const EnvironmentLookup& environment);

// True when the program in that folder is installed: the folder is a prefix's bin with
// share/tessel beside it, or the user cannot create a file in it.
bool InstalledProgramFolder(const std::string& programFolder);

struct ToolFolderChoice {
  std::string folder;
  // Why it could not be made ready, naming the folder or file; empty when it is.
  std::string problem;
};

// The ToolFolder of a program in `programFolder`: that folder itself, or for an installed program
// the user's tool folder, made when missing and given the master copies of the support files
// that are not there in any case. A user folder that cannot be made is still the choice (nothing
// is written beside an installed program), with the problem told.
ToolFolderChoice ChooseToolFolder(const std::string& programFolder, const EnvironmentLookup& environment);

}  // namespace tessel
