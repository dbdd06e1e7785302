#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/reference_update.h"
#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/work.h"

namespace gorbex {

/// Asks the user before an update of references takes the identity of a component out of a project
/// file, because no built component with one is found.
class ReferenceConsent {
 public:
  ReferenceConsent(frmBuilder& window, ReferenceUpdate& references, Dialogs& dialogs,
                   const Work& work)
      : window_(window), references_(references), dialogs_(dialogs), work_(work) {}

  /// To be asked before a run over the rows that it takes: what the run would build itself is still
  /// to come. A yes holds for all of its projects.
  [[nodiscard]] bool ForRun(const std::function<bool(const ListRow&)>& takes);

  /// To be asked in a run, before the update of one project: a project it uses may have failed.
  [[nodiscard]] bool ForProject(const std::string& path);

 private:
  [[nodiscard]] bool Ask(const std::vector<std::string>& references, std::string_view question);

  frmBuilder& window_;
  ReferenceUpdate& references_;
  Dialogs& dialogs_;
  const Work& work_;
  bool isGiven_ = false;  ///< for the present run
};

}  // namespace gorbex
