#include <tvtypes/units/trie.h>

#include <iterator>
#include <utility>

namespace TVTypeSys {

Node::Node(char16_t character, bool isWord) : character_(character), isWord_(isWord) {}

Node::~Node() { remove(); }

Node* Node::addChild(char16_t character, bool isWord) {
    auto child = children_.find(character);
    if (child == children_.end()) {
        if (children_.empty()) {
            children_.rehash(1); // most nodes have one child; the default is 13 buckets
        }
        child = children_.emplace(character, std::make_unique<Node>(character, false)).first;
        child->second->parent_ = this;
    }
    child->second->isWord_ = child->second->isWord_ || isWord;
    return child->second.get();
}

void Node::remove() noexcept {
    // Destroys leaves and climbs to their parents.
    for (Node* node = this; node != this || !children_.empty();) {
        if (!node->children_.empty()) {
            node = node->children_.begin()->second.get();
        } else {
            const char16_t leaf = node->character_;
            node = node->parent_;
            node->children_.erase(leaf);
        }
    }
}

const Node* Node::findChild(char16_t character) const {
    const auto child = children_.find(character);
    return child == children_.end() ? nullptr : child->second.get();
}

Trie::Trie() : root_(std::make_unique<Node>(u' ', false)) {}

Trie::~Trie() = default;

void Trie::addWord(const std::u16string& word) {
    Node* node = root_.get();
    for (std::size_t i = 0; i < word.size(); ++i) {
        node = node->addChild(word[i], i + 1 == word.size());
    }
}

void Trie::getWords(std::vector<std::u16string>& out, const std::u16string& prefix) const {
    std::vector<std::u16string> words;
    getStringCombinations(findLastNodeForMatchingString(prefix), words, prefix);
    out.insert(out.end(), std::make_move_iterator(words.begin()),
               std::make_move_iterator(words.end()));
}

const Node* Trie::findLastNodeForMatchingString(const std::u16string& prefix) const {
    const Node* node = root_.get();
    for (auto character = prefix.begin(); node != nullptr && character != prefix.end();
         ++character) {
        node = node->findChild(*character);
    }
    return node;
}

void Trie::getStringCombinations(const Node* node, std::vector<std::u16string>& out,
                                 const std::u16string& word) const {
    if (node == nullptr) {
        return;
    }
    // The children that are still to be visited, for each node on the path. No recursion, since a
    // word may have any length.
    std::vector<std::pair<Node::Children::const_iterator, Node::Children::const_iterator>> path;
    std::u16string current = word;
    const auto enter = [&](const Node& entered) {
        if (entered.isWord_) {
            out.push_back(current);
        }
        path.emplace_back(entered.children_.begin(), entered.children_.end());
    };
    enter(*node);
    while (!path.empty()) {
        auto& [next, end] = path.back();
        if (next == end) {
            path.pop_back();
            if (!path.empty()) {
                current.pop_back();
            }
        } else {
            const Node& child = *next->second;
            ++next;
            current.push_back(child.character_);
            enter(child);
        }
    }
}

} // namespace TVTypeSys
