#include "ssp/package.h"

#include "exchange/bounds.h"
#include "fmi/reader.h"
#include "fmi/source.h"
#include "ssp/archives.h"
#include "ssp/location.h"
#include "ssp/nesting.h"
#include "ssp/reader.h"
#include "ssp/removal.h"
#include "ssp/source_path.h"
#include "ssp/store.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

namespace tvtool::ssp {

namespace {

namespace fs = std::filesystem;
using findings::Code;

constexpr const char* defaultName = "SystemStructure.ssd";

constexpr std::string_view systemType = "application/x-ssp-definition";
constexpr std::string_view packageType = "application/x-ssp-package";

class PackageReader {
  public:
    explicit PackageReader(std::uint64_t maxUnpacked) : archives_(maxUnpacked) {}

    std::unique_ptr<Package> read(const std::string& path) && {
        std::error_code ignored;
        if (fs::is_directory(path, ignored)) {
            const Store& store = store_.emplace(fs::path(path));
            const std::string name = systemIn(path);
            readSystem(store, name, store.open(name).source, store.shownPath(name));
        } else {
            exchange::Input input = exchange::openInput(path);
            if (input.archive) {
                const Store& store =
                    store_.emplace(std::move(input.archive), path, archives_.unpacked());
                readSystem(store, defaultName, openDefault(store), store.shownPath(defaultName));
            } else {
                const fs::path file(path);
                const Store& store = store_.emplace(file.parent_path());
                readSystem(store, file.filename().string(), input.source, path);
            }
        }
        resolveNesting(*package_);
        return std::move(package_);
    }

  private:
    /// Returns the name of the system description in a folder.
    static std::string systemIn(const std::string& folder) {
        std::error_code ignored;
        if (fs::is_regular_file(fs::path(folder) / defaultName, ignored)) {
            return defaultName;
        }
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
            if (entry.path().extension() == ".ssd") {
                names.push_back(entry.path().filename().string());
            }
        }
        if (names.size() != 1) {
            throw files::ReadError(fmt::format("is a directory without {}", defaultName));
        }
        return names.front();
    }

    static exchange::Source openDefault(const Store& store) {
        if (!store.hasFile(defaultName)) {
            throw files::ReadError(fmt::format("is an archive without {}", defaultName));
        }
        return store.open(defaultName).source;
    }

    SystemFile& readSystem(const Store& store, const std::string& path,
                           const exchange::Source& source, std::string shownPath) {
        if (!source) {
            throw files::ReadError("is an archive, not a system description");
        }
        exchange::checkBound(depth_ + 1, exchange::packageLevelBound);
        SystemFile& file = package_->systems.emplace_back();
        file.file.path = std::move(shownPath);
        References references;
        Removal removal(*package_);
        ssp::readSystem(source, file, *package_, references);
        removal.cancel();
        systems_.insert_or_assign({&store, path}, &file);
        ++depth_;
        for (const SourceReference& reference : references.sources) {
            resolve(reference, references, store, path);
        }
        --depth_;
        return file;
    }

    void resolve(const SourceReference& reference, const References& references, const Store& store,
                 const std::string& path) {
        if (reference.kind == ReferenceKind::Component && reference.source.starts_with('#')) {
            return resolveInFile(reference, references);
        }
        if (!isReadable(reference) && !reference.source.empty()) {
            return addSkipped(reference);
        }
        const Located located = locate(reference, store, path, archives_);
        if (located.store == nullptr) {
            return;
        }
        std::string& fault =
            faults_[{reference.kind, {located.store, located.path}, located.fragment}];
        if (fault.empty()) {
            try {
                return read(reference, located);
            } catch (const files::ReadError& error) {
                fault = fmt::format("{}{}: {}", located.store->shownPath(located.path),
                                    error.line == 0 ? "" : fmt::format(":{}", error.line),
                                    error.what());
            }
        }
        addFinding(reference, Code::ComponentUnreadable, "{}", fault);
    }

    /// Returns whether a source is of a type of the standard that is read.
    static bool isReadable(const SourceReference& reference) {
        const std::string_view type = reference.type;
        switch (reference.kind) {
        case ReferenceKind::Set:
            return type.empty() || type == "application/x-ssp-parameter-set";
        case ReferenceKind::Mapping:
            return type.empty() || type == "application/x-ssp-parameter-mapping";
        case ReferenceKind::Dictionary:
            return type.empty() || type == "application/x-ssp-signal-dictionary";
        default:
            return type.empty() || type == "application/x-fmu-sharedlibrary" ||
                   type == systemType || type == packageType;
        }
    }

    static void addSkipped(const SourceReference& reference) {
        const bool isComponent = reference.kind == ReferenceKind::Component;
        addFinding(reference, Code::ComponentSkipped, "{} {} is of type {}",
                   isComponent ? "component" : "source",
                   text::quoted(isComponent ? reference.element->name : reference.source),
                   text::quoted(reference.type));
    }

    void countFile() { exchange::checkBound(++files_, exchange::fileBound); }

    void resolveInFile(const SourceReference& reference, const References& references) {
        const std::string id = resolveSource("", reference.source).fragment;
        const auto found = references.systems.find(id);
        if (found == references.systems.end()) {
            return addFinding(reference, Code::SourceMissing, "no system of the file has the id {}",
                              text::quoted(id));
        }
        reference.element->system = found->second;
    }

    void read(const SourceReference& reference, const Located& located) {
        switch (reference.kind) {
        case ReferenceKind::Component:
            return readComponent(reference, located);
        case ReferenceKind::Set:
            reference.element->bindings[reference.binding].set =
                &readOnce(sets_, located, &readParameterSet);
            return;
        case ReferenceKind::Mapping:
            reference.element->bindings[reference.binding].mapping =
                &readOnce(mappings_, located, &readMapping);
            return;
        case ReferenceKind::Dictionary:
            const SignalDictionary& read = readOnce(dictionaries_, located, &readDictionary);
            exchange::checkBound(dictionaryEntries_ += sizeOf(read), exchange::dictionaryBound);
            reference.dictionary->file = read.file;
            reference.dictionary->definitions = read.definitions;
            reference.dictionary->entries = read.entries;
            return;
        }
    }

    /// Returns the number of records in a dictionary.
    static std::size_t sizeOf(const SignalDictionary& dictionary) {
        std::size_t size = dictionary.entries.size() + dictionary.definitions.units.size();
        for (const Enumeration& enumeration : dictionary.definitions.enumerations) {
            size += enumeration.items.size() + 1;
        }
        return size;
    }

    /// Reads a file of its own, unless it has been read. One that cannot be read has no record.
    template <class Record>
    const Record& readOnce(std::map<FileKey, const Record*>& known, const Located& located,
                           const Record& (*readFile)(const exchange::Source&, File&, Package&)) {
        const FileKey key{located.store, located.path};
        if (const auto found = known.find(key); found != known.end()) {
            return *found->second;
        }
        countFile();
        const exchange::Input input = located.store->open(located.path);
        if (!input.source) {
            throw files::ReadError("is an archive");
        }
        File& file = package_->others.emplace_back();
        file.path = located.store->shownPath(located.path);
        const Record& record = readFile(input.source, file, *package_);
        known.emplace(key, &record);
        return record;
    }

    void readComponent(const SourceReference& reference, const Located& located) {
        Element& component = *reference.element;
        const FileKey key{located.store, located.path};
        if (const auto known = models_.find(key); known != models_.end()) {
            component.model = known->second;
            return checkImplementation(component, reference);
        }
        if (isSystem(reference, located)) {
            component.system = &readInnerSystem(*located.store, located.path);
            return;
        }
        Opened opened = archives_.open(key);
        const bool isInner = isPackage(reference, located, opened.archive);
        // An archive in memory is unpacked once. One in a folder is opened again if need be, as a
        // process has few open files.
        if (isInner || located.store->isArchive()) {
            archives_.keep(opened, key);
        }
        if (isInner) {
            component.system = &readInnerSystem(
                *opened.archive, located.fragment.empty() ? defaultName : located.fragment);
            return;
        }
        component.model = &readModel(located, std::move(opened));
        models_.emplace(key, component.model);
        checkImplementation(component, reference);
    }

    static bool isSystem(const SourceReference& reference, const Located& located) {
        return reference.type == systemType || located.path.ends_with(".ssd");
    }

    /// Returns whether a component is an archive with a system.
    static bool isPackage(const SourceReference& reference, const Located& located,
                          const Store* archive) {
        return archive != nullptr &&
               (reference.type == packageType || archive->hasFile(defaultName) ||
                (!located.fragment.empty() && archive->hasFile(located.fragment)));
    }

    const Element& readInnerSystem(const Store& store, const std::string& path) {
        const FileKey key{&store, path};
        if (const auto known = systems_.find(key); known != systems_.end()) {
            return known->second->root();
        }
        if (!store.hasFile(path)) {
            throw files::ReadError(fmt::format("has no system description {}", path));
        }
        countFile();
        return readSystem(store, path, store.open(path).source, store.shownPath(path)).root();
    }

    const Model& readModel(const Located& located, Opened opened) {
        countFile();
        Model model;
        model.file.path = located.store->shownPath(located.path);
        const exchange::Source source =
            opened.archive != nullptr
                ? exchange::counted(
                      fmi::openArchive(opened.archive->archive(), model.file.findings),
                      archives_.unpacked())
                : std::move(opened.text);
        std::unique_ptr<fmi::Description> description =
            fmi::readDescription(source, model.file.findings, fmi::Versions::All);
        fmi::checkDescription(*description, model.file.findings);
        Model& kept = package_->models.emplace_back();
        kept.file.path = std::move(model.file.path);
        kept.file.findings = std::move(model.file.findings);
        kept.description = std::move(description);
        return kept;
    }

    static void checkImplementation(const Element& component, const SourceReference& reference) {
        const std::string_view wanted = component.implementation;
        const fmi::Description& description = *component.model->description;
        if (wanted.empty() || wanted == "any") {
            return;
        }
        if (std::ranges::count(description.interfaces, wanted) == 0) {
            addFinding(reference, Code::ImplementationMissing,
                       "the model of component {} has no {}", text::quoted(component.name), wanted);
        }
    }

    std::unique_ptr<Package> package_ = std::make_unique<Package>();
    Archives archives_;
    std::optional<Store> store_; ///< that of the call
    /// Sentences about files that cannot be read; empty for others.
    std::map<std::tuple<ReferenceKind, FileKey, std::string>, std::string> faults_;
    std::map<FileKey, SystemFile*> systems_;
    std::map<FileKey, const Model*> models_;
    std::map<FileKey, const ParameterSet*> sets_;
    std::map<FileKey, const ParameterMapping*> mappings_;
    std::map<FileKey, const SignalDictionary*> dictionaries_;
    std::size_t depth_ = 0;
    std::size_t files_ = 0;
    std::size_t dictionaryEntries_ = 0;
};

} // namespace

std::unique_ptr<Package> readPackage(const std::string& path, std::uint64_t maxUnpacked) {
    return PackageReader(maxUnpacked).read(path);
}

} // namespace tvtool::ssp
