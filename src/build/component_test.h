#pragma once

#include <string>

#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/member.h"
#include "core/procedure.h"
#include "core/select_control_form.h"
#include "core/test_control_form.h"
#include "platform/component_objects.h"

namespace gorbex {

/// Tries the public classes and user controls of a built and registered component: a class is made
/// and one of its properties set and read, each step announced in a message; a user control is put
/// on the test form. Both forms are not modal, and while a message is shown the user may do
/// anything else, such as closing them.
class ComponentTest {
 public:
  struct Uses {
    const frmBuilder& window;
    frmSelectControl& select;
    frmTestControl& test;
    ComponentObjects& objects;
    Dialogs& dialogs;
    ErrorReport& report;
  };

  explicit ComponentTest(const Uses& uses) : uses_(uses) {}

  /// Lists the project's classes and user controls and shows the form.
  void Display(const clsMember& project);

  /// Displays the project that is selected in the queue.
  void mnuQueueTest_Click();

  /// Tests the selected entry.
  void cmdTest_Click();

  void cmdClose_Click();

  /// Closes both forms; for a front end whose user closes the select form's window.
  void frmSelectControl_Form_Unload();

  /// Makes the control that was added last fill the test form's client area.
  void frmTestControl_Form_Resize();

 private:
  void TestClass(Procedure& on, const std::string& identifier);
  void TestControl(Procedure& on, const std::string& identifier);
  void AddControl(const std::string& identifier);

  /// Runs one step and shows the message that it gives, or the error that it raises.
  template <class Step>
  void Announce(Procedure& on, Step&& step);

  Uses uses_;
};

}  // namespace gorbex
