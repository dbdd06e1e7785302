#include "ui/pane_layout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace gorbex::ui {
namespace {

constexpr double kTreeShare = 0.33;
constexpr double kQueueShare = 0.4;
constexpr double kReferencesShare = 0.6;
constexpr int kLeast = 90;
constexpr const char* kPanes = "Panes";

int PartOf(int all, double share) {
  return static_cast<int>(std::lround(all * share));
}

}  // namespace

// All parts take part when the window changes its size.
PaneLayout::PaneLayout(wxWindow* frame)
    : rows_(NewSplitter(frame, kLeast, 1 - kQueueShare)),
      columns_(NewSplitter(rows_, kLeast, kTreeShare)),
      details_(NewSplitter(columns_, kLeast, kReferencesShare)) {}

void PaneLayout::Join(const Parts& parts) {
  parts_ = parts;
  // Tab goes through them in this order.
  details_->MoveAfterInTabOrder(parts.tree);
  details_->Initialize(parts.references);
  parts.failures->Hide();
  columns_->SplitVertically(parts.tree, details_);
  rows_->SplitHorizontally(columns_, parts.queue);
}

void PaneLayout::ShowFailures(bool shown) {
  if (shown == ShowsFailures()) return;
  if (shown) {
    details_->SplitHorizontally(parts_.references, parts_.failures,
                                details_->GetClientSize().y / 2);
    KeepRoom();
  } else {
    details_->Unsplit(parts_.failures);
    GiveRoomBack();
  }
}

void PaneLayout::KeepRoom() {
  if (!ShowsFailures() || !isRestored_) return;
  constexpr int kRows = 3;
  const int references = parts_.references->HeightWith(parts_.referenceList->HeightOf(kRows));
  const int failures = details_->GetSashSize() + details_->GetMinimumPaneSize();
  const int queue =
      rows_->GetSashSize() + parts_.queue->HeightWith(parts_.queueList->HeightOf(kRows));
  const int top = rows_->GetSashPosition();
  const int wanted = std::min(references + failures, rows_->GetClientSize().y - queue);
  if (top < wanted) {
    if (queueTop_ == 0) queueTop_ = top;
    queuePushed_ = wanted;
    rows_->SetSashPosition(wanted);
  }
  const int most = std::max(top, wanted) - failures;
  if (details_->GetSashPosition() < std::min(references, most)) {
    details_->SetSashPosition(std::min(references, most));
  }
}

void PaneLayout::GiveRoomBack() {
  if (queueTop_ != 0 && rows_->GetSashPosition() == queuePushed_) rows_->SetSashPosition(queueTop_);
  queueTop_ = 0;
}

void PaneLayout::Restore(const LayoutStore& store) {
  isRestored_ = true;
  const auto panes = store.Read(kPanes, 4);
  const auto share = [&](std::size_t part, double designed) {
    return panes.empty() ? designed : static_cast<double>(panes[part]) / panes[part + 1];
  };
  columns_->SetSashPosition(PartOf(columns_->GetClientSize().x, share(0, kTreeShare)));
  rows_->SetSashPosition(-PartOf(rows_->GetClientSize().y, share(2, kQueueShare)));
  for (StateList* list : {parts_.referenceList, parts_.queueList}) {
    const auto widths =
        store.Read(list->GetName().utf8_string(), static_cast<std::size_t>(list->GetColumnCount()));
    if (!widths.empty()) list->SetColumnWidths(widths);
  }
}

// Tree and queue, each with all that they share: the next window may have another size.
void PaneLayout::Store(LayoutStore& store) {
  GiveRoomBack();
  const wxSize all = rows_->ToDIP(rows_->GetClientSize());
  store.Write(kPanes, {rows_->ToDIP(columns_->GetSashPosition()), all.x,
                       all.y - rows_->ToDIP(rows_->GetSashPosition()), all.y});
  for (const StateList* list : {parts_.referenceList, parts_.queueList}) {
    if (list->HasOwnWidths()) store.Write(list->GetName().utf8_string(), list->ColumnWidths());
  }
}

}  // namespace gorbex::ui
