#include "model/field_reader.h"

#include "model/fault.h"
#include "model/text.h"

namespace tessel {

namespace {
bool IsBlank(char c) { return c == ' ' || c == '\t'; }
[[noreturn]] void PastEnd() { throw RuntimeFault(FaultKind::ReadPastEnd, "Input past end of file"); }
}  // namespace

void FieldReader::SkipBlanks() {
  while (pos_ < text_.size() && IsBlank(text_[pos_])) ++pos_;
}

bool FieldReader::AtLineEnd() const { return pos_ < text_.size() && (text_[pos_] == '\r' || text_[pos_] == '\n'); }

void FieldReader::ConsumeLineEnd() {
  if (pos_ < text_.size() && text_[pos_] == '\r') ++pos_;
  if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
}

void FieldReader::ConsumeDelimiter() {
  SkipBlanks();
  if (pos_ < text_.size() && text_[pos_] == ',') {
    ++pos_;
  } else if (AtLineEnd()) {
    ConsumeLineEnd();
  }
}

double FieldReader::ReadNumber() {
  SkipBlanks();
  if (Eof()) PastEnd();
  if (AtLineEnd()) {
    ConsumeLineEnd();
    return 0.0;
  }
  if (text_[pos_] == ',') {
    ++pos_;
    return 0.0;
  }
  const std::size_t start = pos_;
  while (pos_ < text_.size() && !IsBlank(text_[pos_]) && text_[pos_] != ',' && !AtLineEnd()) ++pos_;
  const std::string token = text_.substr(start, pos_ - start);
  ConsumeDelimiter();
  const char first = token[0];
  const bool numeric = (first >= '0' && first <= '9') || first == '-' || first == '+' || first == '.';
  if (!numeric) throw RuntimeFault(FaultKind::TypeMismatch, "Type mismatch");
  return Val(token);
}

std::string FieldReader::ReadString() {
  SkipBlanks();
  if (Eof()) PastEnd();
  std::string value;
  if (text_[pos_] == '"') {
    ++pos_;
    const auto close = text_.find('"', pos_);
    const std::size_t stop = close == std::string::npos ? text_.size() : close;
    value = text_.substr(pos_, stop - pos_);
    pos_ = close == std::string::npos ? text_.size() : close + 1;
    // Anything between the closing quote and the delimiter is dropped.
    while (pos_ < text_.size() && text_[pos_] != ',' && !AtLineEnd()) ++pos_;
    ConsumeDelimiter();
    return value;
  }
  const std::size_t start = pos_;
  while (pos_ < text_.size() && text_[pos_] != ',' && !AtLineEnd()) ++pos_;
  value = RTrim(text_.substr(start, pos_ - start));
  ConsumeDelimiter();
  return value;
}

std::string FieldReader::ReadLine() {
  if (Eof()) PastEnd();
  const std::size_t start = pos_;
  while (pos_ < text_.size() && !AtLineEnd()) ++pos_;
  std::string line = text_.substr(start, pos_ - start);
  ConsumeLineEnd();
  return line;
}

}  // namespace tessel
