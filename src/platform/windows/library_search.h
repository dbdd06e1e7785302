#pragma once

namespace gorbex {

/// From now on a library that is asked for by its bare name comes from the system's folder or the
/// folders of the search path, not from the program's folder, where anybody may have put it who may
/// write there. Without effect on a system that does not know how.
void SearchTrustedFoldersAlone();

}  // namespace gorbex
