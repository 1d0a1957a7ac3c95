#include "ssp/nesting.h"

#include "text/quote.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace tvtool::ssp {

namespace {

using findings::Code;
using findings::SubjectKind;

/// Levels of elements, also through components that are systems.
constexpr std::size_t mostLevels = 1'000;

enum class State : std::uint8_t { New, Open, Done };

/// Depth-first search for cycles, with a stack of its own.
class Nesting {
  public:
    void visit(Element& root) {
        if (state_[&root] != State::New) {
            return;
        }
        open(root);
        while (!stack_.empty()) {
            Frame& top = stack_.back();
            Element& element = *top.element;
            const std::size_t index = top.next++;
            if (index < element.elements.size()) {
                descend(*element.elements[index], element);
            } else if (index == element.elements.size() && element.system != nullptr) {
                descend(const_cast<Element&>(*element.system), element);
            } else {
                state_[&element] = State::Done;
                height_[&element] = top.height;
                const std::size_t height = top.height;
                stack_.pop_back();
                if (!stack_.empty()) {
                    stack_.back().height = std::max(stack_.back().height, height + 1);
                }
            }
        }
    }

  private:
    struct Frame {
        Element* element = nullptr;
        std::size_t next = 0;
        std::size_t height = 0; ///< levels below it
    };

    void open(Element& element) {
        state_[&element] = State::Open;
        stack_.push_back({&element});
    }

    /// Visits an element below another one.
    void descend(Element& element, Element& parent) {
        const State state = state_[&element];
        const bool isSystemOfComponent = parent.system == &element;
        if (state == State::Open) {
            parent.system = nullptr;
            return parent.file->file.findings.add(
                Code::SystemCycle, parent.place, {SubjectKind::Element, parent.name},
                "component {} is the system that contains it", text::quoted(parent.name));
        }
        const std::size_t height = state == State::Done ? height_[&element] : 0;
        if (isSystemOfComponent && stack_.size() + height >= mostLevels) {
            parent.system = nullptr;
            return parent.file->file.findings.add(
                Code::ComponentUnreadable, parent.place, {SubjectKind::Element, parent.name},
                "component {} is below more than {} levels of systems", text::quoted(parent.name),
                mostLevels);
        }
        if (state == State::New) {
            open(element);
        } else {
            stack_.back().height = std::max(stack_.back().height, height + 1);
        }
    }

    std::vector<Frame> stack_;
    std::unordered_map<const Element*, State> state_;
    std::unordered_map<const Element*, std::size_t> height_;
};

/// Resolves the references below a system: a name is that of the innermost system that defines it.
class Dictionaries {
  public:
    void resolve(Element& system) {
        for (const SignalDictionary* const dictionary : system.dictionaries) {
            scopes_[dictionary->name].push_back(dictionary);
        }
        for (Element* const element : system.elements) {
            if (element->kind == ElementKind::DictionaryReference) {
                resolveReference(*element);
            }
            resolve(*element);
        }
        for (const SignalDictionary* const dictionary : system.dictionaries) {
            scopes_[dictionary->name].pop_back();
        }
    }

  private:
    void resolveReference(Element& reference) {
        const auto scope = scopes_.find(reference.dictionaryName);
        if (scope != scopes_.end() && !scope->second.empty()) {
            reference.dictionary = scope->second.back();
            return;
        }
        reference.file->file.findings.add(
            Code::DictionaryUndefined, reference.place, {SubjectKind::Element, reference.name},
            "there is no dictionary {}", text::quoted(reference.dictionaryName));
    }

    std::unordered_map<std::string_view, std::vector<const SignalDictionary*>> scopes_;
};

} // namespace

void resolveNesting(Package& package) {
    Nesting nesting;
    for (SystemFile& file : package.systems) {
        if (!file.elements.empty()) {
            nesting.visit(file.elements.front());
            Dictionaries().resolve(file.elements.front());
        }
    }
}

} // namespace tvtool::ssp
