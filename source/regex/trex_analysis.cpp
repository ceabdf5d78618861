// What can be said of a compiled pattern without a text: what each class matches, at which bytes an attempt can get
// anywhere at all, and which literals every match holds.
// It only saves work; what matches is decided by the nodes. Test: tests/regex/trex_differential_test.cpp.

#include <algorithm>
#include <string_view>

#include "regex/trex_expression.h"

namespace {

constexpr std::int32_t kNone = -1;
constexpr std::uint32_t kUnbounded = 0xFFFF;  // rounds of a repetition; the matcher makes one more
constexpr int kMaxDepth = 32;                 // of deeper patterns nothing is said
constexpr int kFairRarity = 12;               // of a literal; one that is more frequent is not worth another search
constexpr int kGoodRarity = 24;               // of a literal; one that is rarer saves nothing more

const TrexByteSet& letterSet(std::int32_t letter) {
  static const auto table = [] {
    std::array<TrexByteSet, 128> sets;
    for (const char c : std::string_view("aAcCdDlpPsSuwWxX")) {
      for (int byte = 0; byte < 256; ++byte) {
        const auto b = static_cast<unsigned char>(byte);
        if (trexClassLetterMatches(c, b)) sets[static_cast<unsigned char>(c)].add(b);
      }
    }
    return sets;
  }();
  return table[static_cast<std::size_t>(letter)];
}

TrexByteSet everyByte() {
  TrexByteSet all;
  all.invert();
  return all;
}

TrexByteSet itemSet(const TrexNode& item) {
  TrexByteSet set;
  if (item.kind == TREX_NODE_CLASS_ESCAPE) {
    set = letterSet(item.left);
  } else if (item.kind == TREX_NODE_RANGE) {
    for (std::int32_t byte = item.left; byte <= item.right; ++byte)
      set.add(static_cast<unsigned char>(byte));
  } else {
    set.add(static_cast<unsigned char>(item.kind));
  }
  return set;
}

TrexByteSet classSet(const std::vector<TrexNode>& nodes, const TrexNode& node) {
  TrexByteSet set;
  for (std::int32_t i = node.left; i != kNone; i = nodes[static_cast<std::size_t>(i)].next) {
    set.add(itemSet(nodes[static_cast<std::size_t>(i)]));
  }
  if (node.kind == TREX_NODE_CLASS_NEGATED) set.invert();
  return set;
}

// What a node matches that consumes a single byte; nothing for others.
TrexByteSet nodeSet(const std::vector<TrexNode>& nodes, const TrexNode& node) {
  if (node.kind == TREX_NODE_ANY) return everyByte();
  if (node.kind == TREX_NODE_CLASS || node.kind == TREX_NODE_CLASS_NEGATED) return classSet(nodes, node);
  return node.kind < TREX_NODE_REPEAT || node.kind == TREX_NODE_CLASS_ESCAPE ? itemSet(node) : TrexByteSet();
}

bool isByte(const TrexNode& node) {
  return node.kind < TREX_NODE_REPEAT || node.kind == TREX_NODE_ANY || node.kind == TREX_NODE_CLASS ||
         node.kind == TREX_NODE_CLASS_ESCAPE || node.kind == TREX_NODE_CLASS_NEGATED;
}

bool isOptional(const TrexNode& node) {
  return node.kind == TREX_NODE_REPEAT && (static_cast<std::uint32_t>(node.right) >> 16) == 0;
}

// The bytes at which a node or a sequence can start to match, and whether it can match without consuming any.
struct First {
  TrexByteSet bytes;
  bool canBeEmpty;
};

class FirstBytes {
 public:
  explicit FirstBytes(const TrexExpression& expression) : e_(expression) {}

  First ofSequence(std::int32_t index, int depth) const {
    First result{{}, true};
    for (; index != kNone && result.canBeEmpty; index = node(index).next) {
      const First one = ofNode(index, depth);
      result.bytes.add(one.bytes);
      result.canBeEmpty = one.canBeEmpty;
    }
    return result;
  }

  First ofNode(std::int32_t index, int depth) const {
    const TrexNode& n = node(index);
    if (depth > kMaxDepth) return {everyByte(), false};
    switch (n.kind) {
      // What the tests of position do depends on where they stand: attempt them everywhere.
      case TREX_NODE_BEGIN:
      case TREX_NODE_END:
      case TREX_NODE_BOUNDARY:
        return {everyByte(), false};
      case TREX_NODE_GROUP:
      case TREX_NODE_GROUP_NOCAPTURE:
        return ofSequence(n.left, depth + 1);
      case TREX_NODE_REPEAT: {
        First one = ofNode(n.left, depth + 1);
        one.canBeEmpty = one.canBeEmpty || (static_cast<std::uint32_t>(n.right) >> 16) == 0;
        return one;
      }
      case TREX_NODE_ALTERNATION: {
        First left = ofSequence(n.left, depth + 1);
        const First right = ofSequence(n.right, depth + 1);
        left.bytes.add(right.bytes);
        left.canBeEmpty = left.canBeEmpty || right.canBeEmpty;
        return left;
      }
      default:
        return {e_.sets[static_cast<std::size_t>(index)], false};
    }
  }

 private:
  const TrexNode& node(std::int32_t index) const { return e_.nodes[static_cast<std::size_t>(index)]; }

  const TrexExpression& e_;
};

// Whether each repetition takes all that it can. One that looks ahead stops early only where what follows matches; it
// does not if what it repeats cannot begin with the same bytes. If both are single bytes, the one that follows is
// noted.
class Greed {
 public:
  explicit Greed(TrexExpression& expression) : e_(expression), first_(expression) {}

  // Of the elements from `index` on, behind which `continuation` comes.
  bool ofSequence(std::int32_t index, std::int32_t continuation, int depth) {
    for (; index != kNone; index = node(index).next) {
      if (!ofNode(index, node(index).next != kNone ? node(index).next : continuation, depth)) return false;
    }
    return true;
  }

 private:
  const TrexNode& node(std::int32_t index) const { return e_.nodes[static_cast<std::size_t>(index)]; }
  const TrexExpression::Trait& trait(std::int32_t index) const { return e_.traits[static_cast<std::size_t>(index)]; }

  static bool isGroup(const TrexNode& node) {
    return node.kind == TREX_NODE_GROUP || node.kind == TREX_NODE_GROUP_NOCAPTURE;
  }

  bool ofNode(std::int32_t index, std::int32_t continuation, int depth) {
    const TrexNode& n = node(index);
    if (depth > kMaxDepth) return false;
    if (isGroup(n)) return ofSequence(n.left, continuation, depth + 1);
    if (n.kind == TREX_NODE_ALTERNATION) return ofAlternative(n.left, depth) && ofAlternative(n.right, depth);
    return n.kind == TREX_NODE_REPEAT ? ofRepeat(index, continuation, depth) : trait(index).isByte;
  }

  // Elements of an alternative have none behind them but those of their own groups.
  bool ofAlternative(std::int32_t index, int depth) {
    for (; index != kNone; index = node(index).next) {
      const bool isRepeat = node(index).kind == TREX_NODE_REPEAT;
      if (!ofNode(index, isRepeat ? node(index).next : kNone, depth + 1)) return false;
    }
    return true;
  }

  bool ofRepeat(std::int32_t index, std::int32_t stop, int depth) {
    const TrexNode& repeat = node(index);
    const std::uint32_t rounds = static_cast<std::uint32_t>(repeat.right);
    if (rounds >> 16 > 1 || (rounds & kUnbounded) != kUnbounded) return false;
    const First taken = first_.ofNode(repeat.left, depth);
    const bool looksAhead = stop != kNone && !trait(stop).isOptional;
    if (taken.canBeEmpty) return false;
    if (looksAhead && !isApart(taken, first_.ofNode(stop, depth))) {
      e_.traits[static_cast<std::size_t>(index)].stop = stop;
      return trait(repeat.left).isByte && trait(stop).isByte;
    }
    return trait(repeat.left).isByte ||
           (isGroup(node(repeat.left)) && ofSequence(node(repeat.left).left, stop, depth + 1));
  }

  static bool isApart(const First& taken, const First& behind) {
    return !behind.canBeEmpty && !taken.bytes.intersects(behind.bytes);
  }

  TrexExpression& e_;
  const FirstBytes first_;
};

// Literals that every match holds. Of several in a row, the first that is rare enough, else the rarest.
class Anchors {
 public:
  using List = std::vector<TrexAnchor>;

  // Of a sequence or of one alternative of it.
  struct Found {
    List anchors;
    std::vector<TrexLiteral> required;  // the literals that it must hold
  };

  explicit Anchors(const TrexExpression& expression) : e_(expression), first_(expression) {}

  // The anchors of a sequence that comes after `before` and is followed by a byte of `after`; adds the bytes of the
  // sequence to `before`.
  Found ofSequence(std::int32_t index, TrexLead& before, const TrexByteSet& after, int depth) {
    Found found;
    while (index != kNone) {
      const TrexNode& n = node(index);
      if (n.kind == TREX_NODE_GROUP || n.kind == TREX_NODE_GROUP_NOCAPTURE) {
        if (depth < kMaxDepth) {
          takeBetter(found, ofSequence(n.left, before, behind(n.next, after, depth), depth + 1));
        } else {
          before = TrexLead::anything();
        }
      } else if (n.kind == TREX_NODE_ALTERNATION) {
        takeBetter(found, {ofAlternation(n, before, after, depth), {}});
      } else if (isLiteral(index)) {
        const TrexLead beforeLiteral = before;
        std::string text;
        for (; index != kNone && isLiteral(index); index = node(index).next) {
          text += literal(index);
          addByte(index, before);
        }
        TrexLiteral literal(std::move(text));
        takeBetter(found, {{{beforeLiteral, literal, behind(index, after, depth), {}}}, {literal}});
        continue;
      } else {
        addBytes(index, before, depth);
      }
      index = n.next;
    }
    for (TrexAnchor& anchor : found.anchors) {
      for (const TrexLiteral& literal : found.required)
        takeBetterRequired(anchor, literal);
    }
    return found;
  }

 private:
  const TrexNode& node(std::int32_t index) const { return e_.nodes[static_cast<std::size_t>(index)]; }

  // A byte, or a class of one item that is a byte.
  bool isLiteral(std::int32_t index) const {
    const TrexNode& n = node(index);
    if (n.kind != TREX_NODE_CLASS) return n.kind < TREX_NODE_REPEAT;
    return node(n.left).kind < TREX_NODE_REPEAT && node(n.left).next == kNone;
  }
  char literal(std::int32_t index) const {
    const TrexNode& n = node(index);
    return static_cast<char>(n.kind == TREX_NODE_CLASS ? node(n.left).kind : n.kind);
  }

  static int rarity(const TrexLiteral& literal) { return std::min(literal.rarity(), kGoodRarity); }

  static int strength(const List& anchors) {
    int weakest = anchors.empty() ? 0 : kGoodRarity;
    for (const TrexAnchor& anchor : anchors)
      weakest = std::min(weakest, rarity(anchor.literal));
    return weakest;
  }

  static void takeBetter(Found& best, Found other) {
    if (strength(other.anchors) > strength(best.anchors)) best.anchors = std::move(other.anchors);
    best.required.insert(best.required.end(), other.required.begin(), other.required.end());
  }

  // The last of the literals that are rare enough, else the rarest.
  static void takeBetterRequired(TrexAnchor& anchor, const TrexLiteral& literal) {
    if (literal.text() == anchor.literal.text() || rarity(literal) < kFairRarity) return;
    if (rarity(literal) >= rarity(anchor.required)) anchor.required = literal;
  }

  List ofAlternation(const TrexNode& alternation, TrexLead& before, const TrexByteSet& after, int depth) {
    if (depth >= kMaxDepth) {
      before = TrexLead::anything();
      return {};
    }
    TrexLead beforeRight = before;
    List anchors = ofSequence(alternation.left, before, after, depth + 1).anchors;
    const List right = ofSequence(alternation.right, beforeRight, after, depth + 1).anchors;
    before = TrexLead::either(before, beforeRight);
    if (anchors.empty() || right.empty() || anchors.size() + right.size() > kMaxAnchors) return {};
    anchors.insert(anchors.end(), right.begin(), right.end());
    return anchors;
  }

  // What can follow in front of a sequence that is followed by a byte of `after`.
  TrexByteSet behind(std::int32_t index, const TrexByteSet& after, int depth) const {
    First first = first_.ofSequence(index, depth);
    if (first.canBeEmpty) first.bytes.add(after);
    return first.bytes;
  }

  void addByte(std::int32_t index, TrexLead& lead) const { lead.addByte(e_.sets[static_cast<std::size_t>(index)]); }

  // Adds what a node can consume.
  void addBytes(std::int32_t index, TrexLead& lead, int depth) {
    const TrexNode& n = node(index);
    if (n.kind == TREX_NODE_REPEAT) {
      addRepeated(n.left, lead, depth);
    } else if (n.kind != TREX_NODE_BEGIN && n.kind != TREX_NODE_END && n.kind != TREX_NODE_BOUNDARY) {
      addByte(index, lead);
    }
  }

  void addRepeated(std::int32_t index, TrexLead& lead, int depth) {
    const std::int32_t kind = node(index).kind;
    TrexLead once;
    if (isByte(node(index))) {
      lead.addRun(e_.sets[static_cast<std::size_t>(index)], kUnbounded + 1);
      return;
    }
    if (kind != TREX_NODE_GROUP && kind != TREX_NODE_GROUP_NOCAPTURE) {
      addBytes(index, once, depth);
    } else if (depth < kMaxDepth) {
      (void)ofSequence(node(index).left, once, everyByte(), depth + 1);
    } else {
      once = TrexLead::anything();
    }
    lead.addRun(once.bytes(), TrexLead::kNoLimit);
  }

  const TrexExpression& e_;
  const FirstBytes first_;
};

}  // namespace

TrexLead TrexLead::anything() {
  TrexLead lead;
  lead.addRun(everyByte(), kNoLimit);
  return lead;
}

TrexLead TrexLead::either(const TrexLead& a, const TrexLead& b) {
  const Stage ofA = a.merged();
  const Stage ofB = b.merged();
  TrexLead lead;
  lead.addRun(merge(ofA, ofB).bytes, std::max(ofA.most, ofB.most));
  return lead;
}

void TrexLead::add(const Stage& stage) {
  for (std::size_t i = 0; i < count_; ++i)
    stages_[i].isNeeded = stages_[i].isNeeded && !stages_[i].bytes.intersects(stage.bytes);
  if (count_ == kMaxStages) {
    stages_[0] = merge(stages_[0], stages_[1]);
    std::move(stages_.begin() + 2, stages_.end(), stages_.begin() + 1);
    --count_;
  }
  stages_[count_++] = stage;
}

TrexLead::Stage TrexLead::merge(const Stage& a, const Stage& b) {
  TrexByteSet bytes = a.bytes;
  bytes.add(b.bytes);
  return {bytes, std::max(a.most, b.most) == kNoLimit ? kNoLimit : a.most + b.most, false};
}

TrexLead::Stage TrexLead::merged() const {
  Stage merged;
  for (std::size_t i = 0; i < count_; ++i)
    merged = merge(merged, stages_[i]);
  return merged;
}

// Each stage, from the last one on, takes what it can. That goes back furthest: what a stage leaves to those before it,
// they take as well if there is less of it.
const char* TrexLead::walkBack(const char* place, const char* first, bool testsNeeded) const {
  for (std::size_t i = count_; i-- > 0;) {
    const Stage& stage = stages_[i];
    const char* const behind = place;
    const char* const furthest = place - std::min(static_cast<std::size_t>(place - first), stage.most);
    while (place > furthest && stage.bytes.contains(static_cast<unsigned char>(place[-1])))
      --place;
    if (testsNeeded && stage.isNeeded && place == behind) return nullptr;
  }
  return place;
}

void trexAnalyse(TrexExpression& expression) {
  expression.sets.resize(expression.nodes.size());
  expression.traits.resize(expression.nodes.size());
  for (std::size_t i = 0; i < expression.nodes.size(); ++i) {
    const TrexNode& node = expression.nodes[i];
    expression.sets[i] = nodeSet(expression.nodes, node);
    expression.traits[i] = {isByte(node), isOptional(node), kNone};
    expression.testsBegin = expression.testsBegin || node.kind == TREX_NODE_BEGIN || node.kind == TREX_NODE_BOUNDARY;
  }
  const First first = FirstBytes(expression).ofSequence(expression.first, 0);
  expression.firstBytes = first.canBeEmpty ? everyByte() : first.bytes;
  expression.isGreedy = Greed(expression).ofSequence(expression.first, kNone, 0);
  TrexLead before;
  Anchors anchors(expression);
  expression.anchors = anchors.ofSequence(expression.first, before, everyByte(), 0).anchors;
}
