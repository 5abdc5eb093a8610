#include <algorithm>
#include <memory>

#include "linker/dyld_info.h"
#include "macho/bytes.h"

namespace varnix::device {
namespace {

size_t ulebSize(uint64_t value) {
  size_t size = 1;
  for (; value >= 0x80; value >>= 7) ++size;
  return size;
}

struct Node {
  const Export* exported = nullptr;  ///< The symbol whose name ends here.
  std::vector<std::pair<std::string_view, std::unique_ptr<Node>>> children;
  size_t offset = 0;

  size_t valueSize() const { return exported == nullptr ? 0 : 1 + ulebSize(exported->address); }

  size_t size() const {
    size_t size = ulebSize(valueSize()) + valueSize() + 1;
    for (const auto& [text, child] : children) size += text.size() + 1 + ulebSize(child->offset);
    return size;
  }

  void write(Writer& out) const {
    out.uleb(valueSize());
    if (exported != nullptr) {
      out.uleb(0);  // a regular symbol
      out.uleb(exported->address);
    }
    out.u8(static_cast<uint8_t>(children.size()));
    for (const auto& [text, child] : children) {
      out.text(text);
      out.uleb(child->offset);
    }
  }
};

using Range = std::span<const Export>;

size_t commonPrefix(std::string_view a, std::string_view b) {
  return static_cast<size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first -
                             a.begin());
}

/// The tree for sorted names that share their first `depth` characters.
std::unique_ptr<Node> grow(Range exports, size_t depth) {
  auto node = std::make_unique<Node>();
  if (exports.front().name.size() == depth) {
    node->exported = &exports.front();
    exports = exports.subspan(1);
  }
  while (!exports.empty()) {
    const std::string_view first = exports.front().name;
    const auto end = std::find_if(exports.begin(), exports.end(), [&](const Export& other) {
      return other.name[depth] != first[depth];
    });
    const Range same(exports.begin(), end);
    const size_t branch = commonPrefix(first, same.back().name);
    node->children.emplace_back(first.substr(depth, branch - depth), grow(same, branch));
    exports = exports.subspan(same.size());
  }
  return node;
}

void collect(Node& node, std::vector<Node*>& nodes) {
  nodes.push_back(&node);
  for (const auto& [text, child] : node.children) collect(*child, nodes);
}

}  // namespace

std::vector<uint8_t> exportTrie(std::vector<Export> exports) {
  if (exports.empty()) return {};
  std::sort(exports.begin(), exports.end(),
            [](const Export& a, const Export& b) { return a.name < b.name; });
  const std::unique_ptr<Node> root = grow(exports, 0);
  std::vector<Node*> nodes;
  collect(*root, nodes);
  // The length of an offset moves what follows, so this repeats until nothing moves.
  for (bool moved = true; moved;) {
    moved = false;
    size_t offset = 0;
    for (Node* node : nodes) {
      moved |= node->offset != offset;
      node->offset = offset;
      offset += node->size();
    }
  }
  Writer out;
  for (const Node* node : nodes) node->write(out);
  return out.take();
}

}  // namespace varnix::device
