#include "macho/export_tree.h"

#include <vector>

#include "macho/cursor.h"
#include "macho/error.h"
#include "macho/format.h"

namespace varnix::device {

namespace {

constexpr int kDeepest = 256;
constexpr size_t kLongestName = 4096;

ExportTerminal readTerminal(Reader bytes) {
  Cursor cursor(bytes);
  ExportTerminal terminal;
  terminal.flags = cursor.uleb();
  terminal.offset = cursor.uleb();
  // A re-export is followed by the name in the other library, a resolver by one more number.
  constexpr uint64_t more = macho::kExportReexport | macho::kExportStubAndResolver;
  terminal.isWhole = cursor.atEnd() || (terminal.flags & more) != 0;
  return terminal;
}

/// A node's terminal, if it has one, and then its edges.
struct TreeNode {
  TreeNode(Reader tree, uint64_t at) : edges(tree, at) {
    const uint64_t size = edges.uleb();
    const uint64_t start = edges.position();
    const Reader bytes = tree.part(start, size);
    if (size != 0) terminal = readTerminal(bytes);
    edges = Cursor(tree, start + size);
    edgeCount = edges.u8();
  }
  std::optional<ExportTerminal> terminal;
  Cursor edges;
  int edgeCount = 0;
};

class TreeWalk {
 public:
  TreeWalk(Reader tree, const std::function<void(const std::string&, const ExportTerminal&)>& each)
      : tree_(tree), each_(each), seen_(tree.size()) {}

  void node(uint64_t at, const std::string& name, int depth) {
    if (depth > kDeepest || name.size() > kLongestName) throw Error("an export has no end");
    if (at >= seen_.size()) throw Error("an export lies outside the tree");
    // Two ways to one node would mean a loop, or endless names.
    if (seen_[at]) throw Error("the tree of exports is not a tree");
    seen_[at] = true;
    TreeNode node(tree_, at);
    if (node.terminal) each_(name, *node.terminal);
    for (int i = 0; i < node.edgeCount; ++i) {
      const std::string_view more = node.edges.text();
      if (more.empty()) throw Error("an edge of the tree of exports has no name");
      this->node(node.edges.uleb(), name + std::string(more), depth + 1);
    }
  }

 private:
  Reader tree_;
  const std::function<void(const std::string&, const ExportTerminal&)>& each_;
  std::vector<bool> seen_;
};

}  // namespace

void walkExportTree(Reader tree,
                    const std::function<void(const std::string&, const ExportTerminal&)>& each) {
  if (tree.size() != 0) TreeWalk(tree, each).node(0, "", 0);
}

std::optional<ExportTerminal> findExport(Reader tree, std::string_view name) {
  uint64_t at = 0;
  for (int depth = 0; depth <= kDeepest; ++depth) {
    TreeNode node(tree, at);
    if (name.empty() && node.terminal) return node.terminal;
    uint64_t next = 0;
    for (int i = 0; i < node.edgeCount && next == 0; ++i) {
      const std::string_view edge = node.edges.text();
      const uint64_t child = node.edges.uleb();
      if (!name.starts_with(edge)) continue;
      name.remove_prefix(edge.size());
      next = child;
      // A child at the root's offset counts as none.
      if (next == 0) return std::nullopt;
    }
    if (next == 0) return std::nullopt;
    at = next;
  }
  throw Error("an export has no end");
}

}  // namespace varnix::device
