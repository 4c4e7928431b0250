// The state of the stand-in host: a plain model that tests build in code and replays read from JSON.
//
// All texts are UTF-8. Host's thread only.
#pragma once

#include <nxopen_export.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace NXOpen {
class BasePart;
}

namespace devkit {

/// What saving a part does.
enum class SaveOutcome { saved, unsavedParts, unsavedObjects, throws, nullStatus };

/// A part's item in Teamcenter.
struct ManagedItem {
    std::string number;
    std::string revision;
    std::string fileType;
    std::string fileName;
    std::string configuredRevision;  ///< what the configured revision's id is; empty gives an empty id
};

/// One placement of a part in an assembly. Its children are the components of the part it places.
struct ComponentData {
    std::string displayName;
    std::string part;    ///< name of the part in the session; empty makes a null component
    bool loaded = true;  ///< false: the component is there, its prototype is null
};

struct PartData {
    std::string name;  ///< how the session's other entries refer to it
    std::string fullPath;
    std::string leaf;
    std::string uniqueIdentifier;
    bool modified = false;
    bool isPart = true;                             ///< false: a base part that is no NXOpen::Part
    std::map<std::string, std::string> attributes;  ///< user attributes of type String
    std::vector<ComponentData> components;          ///< not empty: an assembly
    std::vector<std::string> sheets;                ///< names of its drawing sheets
    bool familyInstance = false;
    bool familyTemplate = false;
    std::optional<int> familyMember;  ///< index of its part-family instance data
    std::optional<ManagedItem> managed;
    std::string content;  ///< bytes that an export writes for a managed part
    SaveOutcome save = SaveOutcome::saved;
};

/// What the clone of a managed part does besides writing each part's file.
struct CloneBehaviour {
    bool writesNothing = false;
    std::string rootName;           ///< file name of the root part instead of its number
    int namingFailures = 0;         ///< reported by every clone operation that reports them
    bool commandLineNames = false;  ///< parts are added by the names "@DB/…" alone
};

/// Something that happened in the host, for the transcript: the kind ("attribute-written", "attribute-deleted",
/// "part-saved", "help-pushed", "clone", "pdf", …) and its facts.
using EventSink = std::function<void(const std::string& kind, const nlohmann::json& facts)>;

/// What the C interface has set in a clone session.
struct CloneSession;

class NXOPEN_EXPORT Session {
 public:
    static Session& instance();

    /// Empties the session: no parts and nothing set. Every host object of a part is gone.
    void reset();

    /// Adds a part and returns it; references stay good until reset(). A missing full path is made from the managed
    /// item, a missing leaf from the item or the path.
    PartData& addPart(const PartData& part);
    PartData* findPart(const std::string& name);
    /// In the order in which they were added.
    const std::deque<PartData>& parts() const { return parts_; }
    /// The managed part with that number, or null.
    PartData* findManaged(const std::string& number);
    /// The host object of the part with that name, or null.
    NXOpen::BasePart* object(const std::string& name);

    void setDisplayed(const std::string& name) { displayed_ = name; }
    const std::string& displayed() const { return displayed_; }

    int applicationModule = 0;  ///< 1 is drafting
    CloneBehaviour clone;
    std::vector<std::filesystem::path> applicationFolders;  ///< searched for layouts and bitmaps, in this order
    EventSink onEvent;
    void report(const std::string& kind, const nlohmann::json& facts);

    std::vector<std::string> helpContexts;       ///< the stack, top last
    std::shared_ptr<CloneSession> cloneSession;  ///< the open one, or null

 private:
    std::deque<PartData> parts_;
    std::unordered_map<std::string, PartData*> byName_;
    std::string displayed_;
};

/// How many objects are alive that a plug-in must end itself: dialogs, property lists, save statuses and builders.
NXOPEN_EXPORT int& liveObjects();

/// Reads the "session" object of a replay, which fits the schema, into the session: parts (their files are created
/// under `folder`), displayed part, application module, clone behaviour, faults. Throws std::runtime_error that names
/// the offending member when names do not fit together.
NXOPEN_EXPORT void loadSession(const nlohmann::json& description, const std::filesystem::path& folder);

/// Applies the "edit" of a replay step to one part: any members of a part's description. Same failures.
NXOPEN_EXPORT void editPart(const nlohmann::json& change, const std::filesystem::path& folder);

/// Adds the fault that a session or a replay step describes; members may be absent.
NXOPEN_EXPORT void addFault(const nlohmann::json& description);

/// {name: {"count", "kinds"}} of the calls of all neighbours, the kinds as in the description of a fault.
NXOPEN_EXPORT nlohmann::json callCounts();

}  // namespace devkit
