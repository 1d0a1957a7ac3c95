#include "ssp/location.h"

#include "ssp/source_path.h"
#include "text/quote.h"

#include <utility>

namespace tvtool::ssp {

namespace {

using findings::Code;

constexpr const char* descriptionName = "modelDescription.xml";

/// Returns the archive or the folder of a component, for files inside it.
Located innerStore(const SourceReference& reference, const Store& store, const std::string& path,
                   Archives& archives) {
    const std::string_view source = reference.element->source.value_or("");
    if (source.empty() || source.starts_with('#') || isAbsolute(source)) {
        addFinding(reference, Code::SourceMissing, "the component has no file that {} could be in",
                   text::quoted(reference.source));
        return {};
    }
    const std::string component = resolveSource(folderOf(path), source).path;
    if (store.hasFile(pathIn(component, descriptionName))) {
        return {&store, pathIn(component, ""), {}};
    }
    if (component.starts_with("../") && store.isArchive()) {
        return {};
    }
    try {
        return {&archives.get({&store, component}), {}, {}};
    } catch (const files::ReadError& error) {
        addFinding(reference, Code::ComponentUnreadable, "{}: {}", store.shownPath(component),
                   error.what());
        return {};
    }
}

} // namespace

Located locate(const SourceReference& reference, const Store& store, const std::string& path,
               Archives& archives) {
    if (reference.source.empty()) {
        addFinding(reference, Code::SourceEmpty, "the source is empty");
        return {};
    }
    if (isAbsolute(reference.source)) {
        addFinding(reference, Code::SourceAbsolute, "source {} is absolute, and is not read",
                   text::quoted(reference.source));
        return {};
    }
    const Store* base = &store;
    std::string folder = folderOf(path);
    if (reference.isInComponent) {
        const Located component = innerStore(reference, store, path, archives);
        if (component.store == nullptr) {
            return {};
        }
        base = component.store;
        folder = component.path;
    }
    SourcePath resolved = resolveSource(folder, reference.source);
    const bool isAbove = resolved.path == ".." || resolved.path.starts_with("../");
    if (isAbove && base->isArchive()) {
        addFinding(reference, Code::SourceOutside, "source {} is outside of the archive",
                   text::quoted(reference.source));
        return {};
    }
    if (isAbove) {
        addFinding(reference, Code::SourceParent,
                   "source {} is above the folder of the system description",
                   text::quoted(reference.source));
    }
    const std::string inFolder = pathIn(resolved.path, descriptionName);
    if (base->hasFile(resolved.path)) {
        return {base, std::move(resolved.path), std::move(resolved.fragment)};
    }
    if (reference.kind == ReferenceKind::Component && base->hasFile(inFolder)) {
        return {base, inFolder, {}};
    }
    addFinding(reference, Code::SourceMissing, "there is no file {}",
               text::quoted(base->shownPath(resolved.path)));
    return {};
}

} // namespace tvtool::ssp
