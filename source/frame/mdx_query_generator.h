#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../statements/mdx_query.h"

#include <cstdint>
#include <memory>
#include <type_traits>
#include <vector>
namespace BRIM_o {
class Calculation;
class Cube;
class Dimension;
class Hierarchy;
class Level;
class Member;
}
class MDXField;
class MDXMemberProperty;
class MDXQueryLog;
class MDXSet;
class MDXTuple;
class MDXValue;

// Makes the statements and expressions for one cube. Each Generate... gives the caller a new object with one
// reference, to be given back by unuse(); the object does not need the generator. When it throws (an MDXError, what
// the host throws, std::bad_alloc), there is no object. Host objects are read during the call and not kept. Pointers
// may not be null unless it says so. Objects may be made on several threads at once; the query log is for one
// thread. The host ends a generator by delete.
class MDX_API MDXQueryGenerator {
public:
    // How the server spells hierarchies: in one pair of brackets with their dimension, or by unique names.
    enum ServerType : std::int32_t { ST_FLAT_HIERARCHIES = 0, ST_UNIQUE_HIERARCHIES = 4 };

    explicit MDXQueryGenerator(KelpString const & cubeName);
    virtual ~MDXQueryGenerator();
    MDXQueryGenerator(MDXQueryGenerator const &) = delete;
    MDXQueryGenerator & operator=(MDXQueryGenerator const &) = delete;

    // A statement on the generator's cube; cast it to MDXSelectQuery, MDXCreateQuery or MDXDropQuery. `cube` is not
    // read and may be null. Throws MDX_ERR_BAD_ENUM for an unknown type, with the value and "QueryType".
    virtual MDXQuery * GenerateQuery(MDXQuery::QueryType type, BRIM_o::Cube * cube) = 0;

    // All members of the hierarchy, calculated ones included.
    virtual MDXSet * GenerateSet(BRIM_o::Hierarchy const * hierarchy) = 0;
    // A list in braces. A tuple without a field throws MDX_ERR_EMPTY_TUPLE.
    virtual MDXSet * GenerateSet(std::vector<MDXField *> const & fields) = 0;
    virtual MDXSet * GenerateSet(std::vector<MDXTuple *> const & tuples) = 0;
    // The members of the level.
    virtual MDXSet * GenerateSet(BRIM_o::Level const * level) = 0;
    // The text itself; the text that another set has now; the empty set.
    virtual MDXSet * GenerateSet(KelpString const & text) = 0;
    virtual MDXSet * GenerateSet(MDXSet const * other) = 0;
    virtual MDXSet * GenerateSet() = 0;

    // owner.[name]
    virtual MDXField * GenerateField(KelpString const & owner, KelpString const & name) = 0;
    // The text that another field has now.
    virtual MDXField * GenerateField(MDXField const * other) = 0;
    // level.[name]
    virtual MDXField * GenerateField(BRIM_o::Level const * level, KelpString const & name) = 0;
    // The calculation's hierarchy, then .[name]; without a hierarchy, its parent's unique name.
    virtual MDXField * GenerateField(BRIM_o::Calculation const * calculation, KelpString const & name) = 0;
    // The default member.
    virtual MDXField * GenerateField(BRIM_o::Dimension const * dimension) = 0;
    // The member's unique name.
    virtual MDXField * GenerateField(BRIM_o::Member const * member) = 0;
    // The text itself.
    virtual MDXField * GenerateField(KelpString const & text) = 0;
    // hierarchy.[name], with each "]" of the name doubled.
    virtual MDXField * GenerateField(BRIM_o::Hierarchy const * hierarchy, KelpString const & name) = 0;
    // The default member.
    virtual MDXField * GenerateField(BRIM_o::Hierarchy const * hierarchy) = 0;

    // The number in decimal; the text itself. A number with a fraction goes in as a text, "1.5".
    virtual MDXValue * GenerateValue(std::int32_t value) = 0;
    virtual MDXValue * GenerateValue(KelpString const & text) = 0;
    template <class Real, std::enable_if_t<std::is_floating_point_v<Real>, int> = 0>
    MDXValue * GenerateValue(Real value) = delete;

    // An empty tuple.
    virtual MDXTuple * GenerateTuple() = 0;

    // owner.[property]
    virtual MDXMemberProperty * GenerateMemberProperty(KelpString const & owner, KelpString const & property) = 0;

    virtual ServerType GetServerType() const = 0;

    // The query log, or null when the machine's settings have it off or its file cannot be opened. Settings are
    // read at the first call alone. The log belongs to the generator.
    virtual MDXQueryLog * GetMDXQueryLog();

protected:
    // Makes the log for GetMDXQueryLog, or returns null for none. The generator owns it then.
    virtual MDXQueryLog * create_mdx_query_log() = 0;

    KelpString fCubeName;

private:
    std::unique_ptr<MDXQueryLog> fQueryLog;
    bool fQueryLogCreated = false;
};

// Makes a generator for the cube with that name in MDX; the name goes into statements unchanged.
// `flatHierarchyNames` says how hierarchies are spelled; see MSOLAP7Field. The caller ends the generator by delete.
MDX_API MDXQueryGenerator * createMSOLAP7QueryGenerator(KelpString const & cubeName, bool flatHierarchyNames);
