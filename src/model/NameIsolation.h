#pragma once

namespace brindle {

/// Whether names that fileNameText() makes keep their own direction within a text that reads the other way:
/// each then stands between a first-strong isolate (U+2068) and its end (U+2069). They don't unless it is
/// asked for. Called before there is a second thread.
void isolateFileNames(bool areIsolated);

}  // namespace brindle
