#pragma once
// The core's ports to the outside: the user (message boxes, input boxes, file choosers, status
// panels, pointer, window title, menu states), the canvas, and the launching of suite tools.
// The desktop implements them with Qt; the tests and tessel-batch implement them by recording.

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessel {

enum class Icon { None, Information, Question, Exclamation, Stop };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };
enum class Pointer { Default, Hourglass, Crosshair, Arrow };

struct FileRequest {
  std::string title;
  std::string filter;          // "Description|*.ext|..." pairs
  std::string initialFolder;
  std::string defaultExtension;
  bool save = false;
  bool overwritePrompt = false;
  // The file offered at first, in initialFolder; empty for none.
  std::string fileName;
};

struct FileChoice {
  std::string fileName;   // the whole path
  std::string fileTitle;  // its last component
};

class UserPort {
 public:
  virtual ~UserPort() = default;
  virtual Answer Message(const std::string& text, Icon icon = Icon::None, Buttons buttons = Buttons::Ok,
                         const std::string& title = {}) = 0;
  // nullopt when cancelled.
  virtual std::optional<std::string> Input(const std::string& prompt, const std::string& title,
                                           const std::string& initial = {}) = 0;
  // nullopt when cancelled.
  virtual std::optional<FileChoice> ChooseFile(const FileRequest& request) = 0;
  // Panels 1 to 4 of the status bar.
  virtual void Status(int panel, const std::string& text) = 0;
  // What a command did, said where its own flow is silent (a file written, a link computed): a
  // passing message in the status bar, which leaves the panels' texts as they are.
  virtual void Note(const std::string& text) = 0;
  virtual void SetPointer(Pointer pointer) = 0;
  virtual void SetTitle(const std::string& title) = 0;
  // Menu entries, toolbar keys and menus, by object name.
  virtual void SetEnabled(const std::string& name, bool enabled) = 0;
  virtual void SetChecked(const std::string& name, bool checked) = 0;
  // Closes a tool form if it is open.
  virtual void UnloadForm(const std::string& name) = 0;
  // Shows a tool form on top of the main window, filled anew from the session even when it was
  // open already. (Open forms follow the session's changes by themselves: Session::Changed.)
  virtual void ShowForm(const std::string& form) = 0;
  // Lets pending interface events run, as a long step does between its parts.
  virtual void YieldEvents() = 0;
  // Shows a popup menu at the pointer with the named entries visible and the others hidden.
  virtual void ShowPopup(const std::string& menu, const std::vector<std::string>& visible,
                         const std::vector<std::string>& hidden) = 0;
  // The main window's outer size in twips (1/1440 inch), which zoom previous takes as a size.
  virtual void OuterSizeTwips(double& width, double& height) = 0;
  // User tool entry k (1 to 12) is set: the toolbox button gets the caption, and for the first
  // ten the toolbar key "usr<k>" shows it as its tip.
  virtual void SetToolButton(int k, const std::string& caption) = 0;
};

enum class DrawMode { Copy, Invert };

// The drawing surface. Coordinates are world coordinates; the surface maps them to its pixels by
// its four scale values. Colours are 0xRRGGBB.
class CanvasPort {
 public:
  virtual ~CanvasPort() = default;
  virtual void Clear() = 0;
  virtual void Dot(double x, double y, unsigned colour) = 0;
  virtual void Line(double x1, double y1, double x2, double y2, unsigned colour) = 0;
  virtual void Text(const std::string& text) = 0;
  virtual void Circle(double x, double y, double radius, unsigned colour) = 0;
  virtual void SetPenWidth(int width) = 0;
  virtual void SetPenStyle(int style) = 0;
  virtual void SetDrawMode(DrawMode mode) = 0;
  virtual void SetColours(unsigned back, unsigned fore) = 0;
  virtual void SetScale(double left, double top, double width, double height) = 0;
  // Labels. While they are kept apart, a text that would lie over a label drawn since the last
  // NewLabelLayer is left out (the position still moves past it) and counted; turning it on or
  // off starts the count afresh. A surface that cannot measure text draws every label.
  virtual void KeepLabelsApart(bool on) { (void)on; }
  virtual void NewLabelLayer() {}
  virtual int HiddenLabels() const { return 0; }
  // The surface's size in device pixels, so that the view can keep one job unit as long across
  // as up; false for a surface without pixels (a recording), which takes the view's own shape.
  virtual bool PixelSize(int& width, int& height) const {
    (void)width;
    (void)height;
    return false;
  }
};

enum class ShowMode { Hidden = 0, Normal = 1 };

// What a launch starts: a program and its arguments, each passed whole, so that blanks and
// quotes in a folder or a file name are part of the name. No launch goes through a shell.
struct Launch {
  std::string program;
  std::vector<std::string> arguments;

  // The launch as one line for the eye (logs, tests): the program and each argument, those
  // holding a blank or a double quote put in double quotes with their quotes doubled.
  std::string Text() const;
  bool operator==(const Launch&) const = default;
};

// How a process started by SpawnReported ended: not started at all (`reason` says why), ended
// abnormally, or ended with its exit code.
struct SpawnEnd {
  bool started = true;
  bool crashed = false;
  int exitCode = 0;
  std::string reason;
};
using SpawnEnded = std::function<void(const SpawnEnd&)>;

// Starting a suite tool with `folder` as its current folder.
class ProcessPort {
 public:
  virtual ~ProcessPort() = default;
  // Blocks until the tool has ended.
  virtual void Run(const Launch& launch, const std::string& folder) = 0;
  // Blocks, and gives the exit code.
  virtual int RunCode(const Launch& launch, const std::string& folder, ShowMode mode) = 0;
  // Keeps the interface alive while polling; the named entries are disabled meanwhile.
  virtual void Watch(const Launch& launch, const std::string& folder,
                     const std::vector<std::string>& lockedEntries) = 0;
  // Returns at once.
  virtual void Spawn(const Launch& launch, const std::string& folder, ShowMode mode) = 0;
  // Returns at once too, and tells `ended` how the process ended: before returning, with false,
  // when it could not start; otherwise later, between interface events, once it has ended. A
  // process still running when the port goes away runs on untold.
  virtual bool SpawnReported(const Launch& launch, const std::string& folder, ShowMode mode, SpawnEnded ended) = 0;
};

}  // namespace tessel
