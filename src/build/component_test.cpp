#include "build/component_test.h"

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

// Each is a kind prefix of four characters less its blank.
constexpr std::string_view kClass = "(o)";
constexpr std::string_view kUserControl = "(u)";
constexpr std::size_t kPrefixLength = 4;
constexpr std::size_t kExtensionLength = 4;

std::string_view KindOf(std::string_view file) {
  const std::string name = LowerCase(file);
  if (name.ends_with(".cls")) return kClass;
  if (name.ends_with(".ctl")) return kUserControl;
  return {};
}

std::vector<std::string> EntriesOf(const clsMember& project) {
  std::vector<std::string> entries;
  for (const std::string& member : project.UserControls) {
    const std::string file = member.substr(0, member.find(';'));
    const std::string_view kind = KindOf(file);
    if (kind.empty()) continue;
    const auto name = std::string_view(file).substr(0, file.size() - kExtensionLength);
    entries.push_back(std::string(kind).append(" ").append(project.Name).append(".").append(name));
  }
  return entries;
}

std::string IdentifierOf(const std::string& entry) {
  return entry.size() > kPrefixLength ? entry.substr(kPrefixLength) : std::string();
}

ComponentObject& Existing(const std::unique_ptr<ComponentObject>& object) {
  if (object == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet);
  return *object;
}

bool IsBlank(const std::string& text) {
  return TrimBlanks(text).empty();
}

}  // namespace

void ComponentTest::Display(const clsMember& project) {
  Procedure(uses_.report, ": frmSelectControl.Display").Run([&](Procedure& on) {
    frmSelectControl& form = uses_.select;
    on([&] { form.cboComponents.selected.Set(std::nullopt); });
    on([&] { form.cboComponents.items.Set(EntriesOf(project)); });
    if (!form.cboComponents.items.Get().empty()) on([&] { form.cboComponents.selected.Set(0); });
    on([&] { form.visible.Set(true); });
  });
}

void ComponentTest::mnuQueueTest_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuQueueTest_Click").Run([&](Procedure& on) {
    const ListRow* row = on([&] { return &uses_.window.lvwQueue.SelectedRow(); });
    if (row == nullptr) return;
    const clsMember* project = on([&] { return &uses_.window.ProjectMembers.Item(row->Key()); });
    if (project != nullptr) Display(*project);
  });
}

void ComponentTest::cmdTest_Click() {
  Procedure(uses_.report, ": frmSelectControl.cmdTest_Click").Run([&](Procedure& on) {
    const std::string entry = uses_.select.cboComponents.Text();
    if (entry.starts_with(kClass)) TestClass(on, IdentifierOf(entry));
    if (entry.starts_with(kUserControl)) TestControl(on, IdentifierOf(entry));
  });
}

template <class Step>
void ComponentTest::Announce(Procedure& on, Step&& step) {
  const std::string message = on([&]() -> std::string {
    try {
      return step();
    } catch (const RuntimeError& error) {
      return "error " + error.Description();
    }
  });
  if (!message.empty()) on([&] { uses_.dialogs.Show({message}); });
}

void ComponentTest::TestClass(Procedure& on, const std::string& identifier) {
  // As they are now, whatever the user types while a message is shown.
  const std::string property = uses_.select.txtProperty.text.Get();
  const std::string value = uses_.select.txtValue.text.Get();
  std::unique_ptr<ComponentObject> object;
  Announce(on, [&] {
    object = uses_.objects.CreateObject(identifier);
    return "object created " + identifier;
  });
  if (IsBlank(property)) return;
  if (!IsBlank(value)) {
    Announce(on, [&] {
      Existing(object).Let(property, value);
      return "property " + property + " set to value " + value;
    });
  }
  Announce(on,
           [&] { return "property " + property + " got value " + Existing(object).Get(property); });
}

void ComponentTest::TestControl(Procedure& on, const std::string& identifier) {
  Announce(on, [&] {
    uses_.objects.AddLicense(identifier);
    AddControl(identifier);
    return std::string();
  });
}

void ComponentTest::AddControl(const std::string& identifier) {
  frmTestControl& form = uses_.test;
  auto hosted = std::make_unique<HostedControl>();
  hosted->control =
      uses_.objects.CreateControl(identifier, [wish = hosted.get()] { wish->repaint.Emit(); });
  form.Add(std::move(hosted));
  // A window that is only now made gives the form its size.
  if (!form.visible.Get()) form.visible.Set(true);
  if (!form.Controls().empty()) form.Controls().back()->Resize(form.clientSize);
}

void ComponentTest::cmdClose_Click() {
  Procedure(uses_.report, ": frmSelectControl.cmdClose_Click").Run([&](Procedure& on) {
    on([&] { frmSelectControl_Form_Unload(); });
  });
}

void ComponentTest::frmSelectControl_Form_Unload() {
  Procedure(uses_.report, ": frmSelectControl.Form_Unload").Run([&](Procedure& on) {
    on([&] { uses_.test.Unload(); });
    on([&] { uses_.objects.LetGoOfUnused(); });
    if (uses_.select.visible.Get()) on([&] { uses_.select.visible.Set(false); });
  });
}

void ComponentTest::frmTestControl_Form_Resize() {
  Procedure(uses_.report, ": frmTestControl.Form_Resize").Run([&](Procedure& on) {
    // Looked up anew at every try: the form may be closed while an error is shown.
    on([&] {
      const auto& controls = uses_.test.Controls();
      if (!controls.empty()) controls.back()->Resize(uses_.test.clientSize);
    });
  });
}

}  // namespace gorbex
