#include "DLLs/Tools/Geometry/ClipperStatus.h"

namespace Ketril::Tools {

TClipStatus::TClipStatus(std::size_t capacity, std::pmr::memory_resource* memory)
    : memory_(memory),
      capacity_(capacity),
      nodes_(static_cast<TClipNode*>(memory->allocate(capacity * sizeof(TClipNode), alignof(TClipNode)))) {}

TClipStatus::~TClipStatus() {
  memory_->deallocate(nodes_, capacity_ * sizeof(TClipNode), alignof(TClipNode));
}

TClipNode* TClipStatus::InsertAfter(TClipNode* previous) {
  TClipNode* node = free_;
  if (node) {
    free_ = node->next;
  } else {
    node = nodes_ + used_++;
  }
  TClipNode* const next = previous ? previous->next : first_;
  random_ = random_ * 1664525 + 1013904223;
  *node = {nullptr, previous, next, nullptr, nullptr, nullptr, random_ >> 4, -1, 0, false, false};
  (previous ? previous->next : first_) = node;
  if (next) next->previous = node;

  if (!root_) {
    root_ = node;
  } else if (previous && !previous->right) {
    previous->right = node;
    node->parent = previous;
  } else {
    next->left = node;
    node->parent = next;
  }
  while (node->parent && node->parent->priority < node->priority) RotateUp(node);
  return node;
}

void TClipStatus::Erase(TClipNode* node) {
  while (node->left && node->right) {
    RotateUp(node->left->priority > node->right->priority ? node->left : node->right);
  }
  TClipNode* const child = node->left ? node->left : node->right;
  ReplaceChild(node->parent, node, child);
  if (child) child->parent = node->parent;

  (node->previous ? node->previous->next : first_) = node->next;
  if (node->next) node->next->previous = node->previous;
  node->next = free_;
  free_ = node;
}

TClipNode* TClipStatus::Locate(TClipPoint point, bool& on) const {
  on = false;
  TClipNode* last = nullptr;
  for (TClipNode* node = root_; node;) {
    const int side = SideOf(*node->edge, point);
    if (side > 0) {
      node = node->left;
      continue;
    }
    last = node;
    on = side == 0;
    if (on) break;
    node = node->right;
  }
  return last;
}

void TClipStatus::RotateUp(TClipNode* node) {
  TClipNode* const parent = node->parent;
  ReplaceChild(parent->parent, parent, node);
  node->parent = parent->parent;
  TClipNode*& outer = parent->left == node ? node->right : node->left;
  TClipNode*& inner = parent->left == node ? parent->left : parent->right;
  inner = outer;
  if (inner) inner->parent = parent;
  outer = parent;
  parent->parent = node;
}

void TClipStatus::ReplaceChild(TClipNode* parent, TClipNode* child, TClipNode* by) {
  if (!parent) {
    root_ = by;
  } else {
    (parent->left == child ? parent->left : parent->right) = by;
  }
}

}  // namespace Ketril::Tools
