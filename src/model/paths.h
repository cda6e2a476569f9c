#pragma once
// File names of a job. The suite's tools and this program spell extensions in either case, so
// a dataset is found whatever case it has on disk; a file that does not exist yet is created in
// the spelling asked for.

#include <string>
#include <string_view>

namespace tessel {

// The platform's path separator.
char PathSeparator();

// The path as it exists on disk when only the case of its last component differs; otherwise the
// path unchanged. An exact spelling wins over other spellings; among several other spellings
// the first in byte order is taken.
std::string ResolveCase(const std::string& path);

// True when a file of that name exists, in any case of its last component.
bool FileExistsAnyCase(const std::string& path);

// Deletes the file in whatever case it exists; returns true when one was deleted.
bool DeleteAnyCase(const std::string& path);

// Copies a file over another, replacing it; a failure is a file-access fault.
void CopyFileReplacing(const std::string& from, const std::string& to);

// The folder holding the running program, without a separator at its end.
std::string ProgramFolder(const char* argv0);

// True when the path does not depend on the current folder alone: it starts at a root ("/",
// "\\") or names a drive ("C:").
bool IsRootedPath(const std::string& path);

// True when the two texts name one file or folder: the same bytes, and where the file system
// ignores case (Windows) also in another case of letters or with "/" for "\\".
bool SamePathText(const std::string& a, const std::string& b);

}  // namespace tessel
