#pragma once
// Ports that record what the core asked for instead of showing it: used by tessel-batch and by
// the tests. Questions are answered from a queue of prepared answers, or with a default.

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/ports.h"

namespace tessel {

struct RecordedMessage {
  std::string text;
  Icon icon = Icon::None;
  Buttons buttons = Buttons::Ok;
  std::string title;
};

class RecordingUserPort : public UserPort {
 public:
  Answer Message(const std::string& text, Icon icon, Buttons buttons, const std::string& title) override;
  std::optional<std::string> Input(const std::string& prompt, const std::string& title,
                                   const std::string& initial) override;
  std::optional<FileChoice> ChooseFile(const FileRequest& request) override;
  void Status(int panel, const std::string& text) override;
  void Note(const std::string& text) override { notes.push_back(text); }
  void SetPointer(Pointer pointer) override { pointers.push_back(pointer); }
  void SetTitle(const std::string& text) override { title = text; }
  void SetEnabled(const std::string& name, bool on) override { enabled[name] = on; }
  void SetChecked(const std::string& name, bool on) override { checked[name] = on; }
  void UnloadForm(const std::string& name) override { unloaded.push_back(name); }
  void ShowForm(const std::string& form) override { shownForms.push_back(form); }
  // Runs the prepared interruption once, as if an event had arrived meanwhile.
  void YieldEvents() override {
    ++yields;
    if (onYield) {
      auto once = std::move(onYield);
      onYield = nullptr;
      once();
    }
  }
  void SetToolButton(int k, const std::string& caption) override { toolButtons[k] = caption; }
  void ShowPopup(const std::string& menu, const std::vector<std::string>& visible,
                 const std::vector<std::string>&) override {
    popups.push_back({menu, visible});
  }
  void OuterSizeTwips(double& width, double& height) override {
    width = outerTwips.first;
    height = outerTwips.second;
  }

  // Prepared replies, taken in order; when empty, a message is answered Ok (Yes for a Yes/No
  // question), an input box and a file chooser are cancelled.
  std::deque<Answer> answers;
  std::deque<std::optional<std::string>> inputs;
  std::deque<std::optional<FileChoice>> files;

  std::vector<RecordedMessage> messages;
  std::vector<std::string> prompts;
  std::vector<FileRequest> fileRequests;
  // Every text put in each panel, in order; statusNow the texts standing now.
  std::map<int, std::vector<std::string>> status;
  std::map<int, std::string> statusNow;
  std::vector<std::string> notes;
  std::vector<Pointer> pointers;
  std::string title;
  std::map<std::string, bool> enabled;
  std::map<std::string, bool> checked;
  std::vector<std::string> unloaded;
  std::vector<std::string> shownForms;
  int yields = 0;
  std::function<void()> onYield;
  std::map<int, std::string> toolButtons;
  struct Popup {
    std::string menu;
    std::vector<std::string> visible;
  };
  std::vector<Popup> popups;
  std::pair<double, double> outerTwips{14400.0, 10800.0};

  // The texts of the messages, in order.
  std::vector<std::string> MessageTexts() const;
};

// One primitive as the canvas received it.
struct CanvasCall {
  std::string op;  // "Clear", "Dot", "Line", "Text", "Circle", "PenWidth", "PenStyle", "DrawMode", "Colours", "Scale"
  std::vector<double> args;
  unsigned colour = 0;
  std::string text;

  bool operator==(const CanvasCall&) const = default;
};

// A canvas that records every primitive in order.
class RecordingCanvas : public CanvasPort {
 public:
  void Clear() override { calls.push_back({"Clear", {}, 0, {}}); }
  void Dot(double x, double y, unsigned colour) override { calls.push_back({"Dot", {x, y}, colour, {}}); }
  void Line(double x1, double y1, double x2, double y2, unsigned colour) override {
    calls.push_back({"Line", {x1, y1, x2, y2}, colour, {}});
  }
  void Text(const std::string& text) override { calls.push_back({"Text", {}, 0, text}); }
  void Circle(double x, double y, double radius, unsigned colour) override {
    calls.push_back({"Circle", {x, y, radius}, colour, {}});
  }
  void SetPenWidth(int width) override { calls.push_back({"PenWidth", {double(width)}, 0, {}}); }
  void SetPenStyle(int style) override { calls.push_back({"PenStyle", {double(style)}, 0, {}}); }
  void SetDrawMode(DrawMode mode) override { calls.push_back({"DrawMode", {mode == DrawMode::Invert ? 1.0 : 0.0}, 0, {}}); }
  void SetColours(unsigned back, unsigned fore) override { calls.push_back({"Colours", {double(back), double(fore)}, 0, {}}); }
  void SetScale(double left, double top, double width, double height) override {
    calls.push_back({"Scale", {left, top, width, height}, 0, {}});
  }
  // No pixels unless a test gives the canvas a size.
  bool PixelSize(int& width, int& height) const override {
    if (pixelWidth <= 0 || pixelHeight <= 0) return false;
    width = pixelWidth;
    height = pixelHeight;
    return true;
  }

  // The calls of one kind, in order.
  std::vector<CanvasCall> Of(const std::string& op) const {
    std::vector<CanvasCall> out;
    for (const auto& c : calls) {
      if (c.op == op) out.push_back(c);
    }
    return out;
  }

  std::vector<CanvasCall> calls;
  int pixelWidth = 0, pixelHeight = 0;
};

// A canvas that keeps nothing.
class NullCanvas : public CanvasPort {
 public:
  void Clear() override {}
  void Dot(double, double, unsigned) override {}
  void Line(double, double, double, double, unsigned) override {}
  void Text(const std::string&) override {}
  void Circle(double, double, double, unsigned) override {}
  void SetPenWidth(int) override {}
  void SetPenStyle(int) override {}
  void SetDrawMode(DrawMode) override {}
  void SetColours(unsigned, unsigned) override {}
  void SetScale(double, double, double, double) override {}
};

struct RecordedLaunch {
  std::string kind;  // "Run", "RunCode", "Watch", "Spawn"
  std::string commandLine;  // the launch's Text()
  std::string folder;
  tessel::Launch launch;
};

// Records launches and starts nothing.
class RecordingProcessPort : public ProcessPort {
 public:
  void Run(const Launch& launch, const std::string& folder) override;
  int RunCode(const Launch& launch, const std::string& folder, ShowMode mode) override;
  void Watch(const Launch& launch, const std::string& folder, const std::vector<std::string>& lockedEntries) override;
  void Spawn(const Launch& launch, const std::string& folder, ShowMode mode) override;
  // Recorded as a "Spawn". With `notStarted` set it does not start, for that reason; otherwise
  // its report waits in `running` for the test to end it.
  bool SpawnReported(const Launch& launch, const std::string& folder, ShowMode mode, SpawnEnded ended) override;

  std::vector<RecordedLaunch> launches;
  std::string notStarted;
  std::vector<SpawnEnded> running;
};

}  // namespace tessel
