#pragma once

namespace gorbex {

/// From now on a library with a bare name is loaded from the system's folder or the folders of the
/// search path, but not from the program's folder, where anybody with the right to write there may
/// have put it. Without effect on a system that does not know how.
void SearchTrustedFoldersAlone();

}  // namespace gorbex
