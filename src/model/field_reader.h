#pragma once
// Free-format reading of numbers and strings from a text, field by field, as Tessel.cfg and the
// counts of .LXN are read: numbers end at a blank, a comma or a line end; strings end at a comma
// or a line end; an empty line gives 0 or an empty string; a read at the end is a fault.

#include <string>

namespace tessel {

class FieldReader {
 public:
  explicit FieldReader(std::string text) : text_(std::move(text)) {}

  // A number; text that does not start like a number is a type mismatch fault.
  double ReadNumber();
  // A string, unquoted up to a comma or the line end, or quoted.
  std::string ReadString();
  // The rest of the current line, as a whole.
  std::string ReadLine();
  bool Eof() const { return pos_ >= text_.size(); }

 private:
  void SkipBlanks();
  bool AtLineEnd() const;
  void ConsumeLineEnd();
  // After a field: blanks, then one comma or one line end.
  void ConsumeDelimiter();

  std::string text_;
  std::size_t pos_ = 0;
};

}  // namespace tessel
