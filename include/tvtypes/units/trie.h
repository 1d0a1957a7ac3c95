/// \file
/// Prefix tree of words, for completion.
#pragma once

#include <tvtypes/export.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// \addtogroup units
/// @{

namespace TVTypeSys {

/// A node of a Trie: the last character of all words and prefixes that lead to it.
class TVTYPES_API Node {
  public:
    /// Creates a node without children.
    /// \param character the character that the node adds to its parent
    /// \param isWord    whether a word ends here
    Node(char16_t character, bool isWord);
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    /// Destroys all descendants too, without recursion.
    ~Node();

    /// Returns the child with this character, which is created if there is none. `isWord` marks it
    /// as the end of a word; false never removes the mark. The node owns the child. Throws
    /// std::bad_alloc with nothing changed.
    Node* addChild(char16_t character, bool isWord);

    /// Destroys all descendants; the node stays. Needs no memory and no stack, so that a word may
    /// have any length.
    void remove() noexcept;

    /// Returns the child with this character; null if there is none.
    const Node* findChild(char16_t character) const;

    /// Returns the character of this node.
    char16_t getCharacter() const { return character_; }
    /// Returns whether a word ends here.
    bool isWord() const { return isWord_; }

  private:
    friend class Trie;
    using Children = std::unordered_map<char16_t, std::unique_ptr<Node>>;

    Children children_;
    Node* parent_ = nullptr;
    char16_t character_;
    bool isWord_;
};

/// A set of words as a prefix tree. Characters are 16-bit code units, compared exactly.
///
/// Words are found in depth-first order: a word precedes its extensions, and siblings have the
/// order of a hash table. Searches may run in several threads while none adds words.
class TVTYPES_API Trie {
  public:
    /// Creates an empty set. The character of the root is a blank, which is part of no word.
    Trie();
    Trie(const Trie&) = delete;
    Trie& operator=(const Trie&) = delete;
    ~Trie();

    /// Adds a word; the empty one is ignored. Throws std::bad_alloc with the set of words
    /// unchanged. Linear in the length.
    void addWord(const std::u16string& word);

    /// Appends all words that begin with the prefix, the prefix itself included; all words for "".
    /// Linear in the length of the prefix and the size of the subtree below it.
    void getWords(std::vector<std::u16string>& out, const std::u16string& prefix) const;

    /// Returns the node that the characters of the prefix lead to, the root for ""; null if no word
    /// begins with the prefix. The trie owns the node.
    const Node* findLastNodeForMatchingString(const std::u16string& prefix) const;

    /// Appends `word` if a word ends at the node, then `word` with the characters of each path from
    /// the node to the end of another word. A null node has no words.
    void getStringCombinations(const Node* node, std::vector<std::u16string>& out,
                               const std::u16string& word) const;

    /// Returns the root, which the trie owns, so that words can be added character by character.
    Node* getRoot() { return root_.get(); }

  private:
    std::unique_ptr<Node> root_;
};

} // namespace TVTypeSys

/// @}
