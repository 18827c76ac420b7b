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

MDX_EXPORTS_BEGIN

/// Makes the statements and expressions for one cube. Delete a generator with `delete`.
///
/// Each Generate... function returns a new object with one reference, which the caller gives back with unuse(). The
/// object does not need the generator. A function that throws (MDXError, what the host's objects throw,
/// std::bad_alloc) makes no object. Host objects are read during the call and not kept. Pointers may not be null
/// unless a function says so.
///
/// Objects may be made on several threads at once. The query log is for one thread at a time.
class MDX_API MDXQueryGenerator {
public:
    /// How the server spells hierarchies: [dimension.hierarchy] or unique names.
    enum ServerType : std::int32_t { ST_FLAT_HIERARCHIES = 0, ST_UNIQUE_HIERARCHIES = 4 };

    explicit MDXQueryGenerator(KelpString const & cubeName);
    virtual ~MDXQueryGenerator();
    MDXQueryGenerator(MDXQueryGenerator const &) = delete;
    MDXQueryGenerator & operator=(MDXQueryGenerator const &) = delete;

    /// A statement on the generator's cube: cast it to MDXSelectQuery, MDXCreateQuery or MDXDropQuery. `cube` is
    /// not read and may be null. Throws MDX_ERR_BAD_ENUM for an unknown type, with the value and "QueryType".
    [[nodiscard]] virtual MDXQuery * GenerateQuery(MDXQuery::QueryType type, BRIM_o::Cube * cube) = 0;

    /// All members of the hierarchy, including the calculated ones.
    [[nodiscard]] virtual MDXSet * GenerateSet(BRIM_o::Hierarchy const * hierarchy) = 0;
    /// { first, second }. Throws MDX_ERR_EMPTY_TUPLE if a tuple has no field.
    [[nodiscard]] virtual MDXSet * GenerateSet(std::vector<MDXField *> const & fields) = 0;
    [[nodiscard]] virtual MDXSet * GenerateSet(std::vector<MDXTuple *> const & tuples) = 0;
    /// The members of the level.
    [[nodiscard]] virtual MDXSet * GenerateSet(BRIM_o::Level const * level) = 0;
    /// The text itself.
    [[nodiscard]] virtual MDXSet * GenerateSet(KelpString const & text) = 0;
    /// The current text of another set.
    [[nodiscard]] virtual MDXSet * GenerateSet(MDXSet const * other) = 0;
    /// The empty set.
    [[nodiscard]] virtual MDXSet * GenerateSet() = 0;

    /// owner.[name]
    [[nodiscard]] virtual MDXField * GenerateField(KelpString const & owner, KelpString const & name) = 0;
    /// The current text of another field.
    [[nodiscard]] virtual MDXField * GenerateField(MDXField const * other) = 0;
    /// level.[name]
    [[nodiscard]] virtual MDXField * GenerateField(BRIM_o::Level const * level, KelpString const & name) = 0;
    /// hierarchy.[name] with the calculation's hierarchy. If `getHierarchy` returns null, the parent's unique name
    /// is used; the calculation must then have a parent.
    [[nodiscard]] virtual MDXField * GenerateField(
        BRIM_o::Calculation const * calculation, KelpString const & name) = 0;
    /// The default member.
    [[nodiscard]] virtual MDXField * GenerateField(BRIM_o::Dimension const * dimension) = 0;
    /// The member's unique name.
    [[nodiscard]] virtual MDXField * GenerateField(BRIM_o::Member const * member) = 0;
    /// The text itself.
    [[nodiscard]] virtual MDXField * GenerateField(KelpString const & text) = 0;
    /// hierarchy.[name], with each "]" in the name doubled.
    [[nodiscard]] virtual MDXField * GenerateField(
        BRIM_o::Hierarchy const * hierarchy, KelpString const & name) = 0;
    /// The default member.
    [[nodiscard]] virtual MDXField * GenerateField(BRIM_o::Hierarchy const * hierarchy) = 0;

    /// The number in decimal. Pass a number with a fraction as text: "1.5".
    [[nodiscard]] virtual MDXValue * GenerateValue(std::int32_t value) = 0;
    /// The text itself.
    [[nodiscard]] virtual MDXValue * GenerateValue(KelpString const & text) = 0;
    template <class Real, std::enable_if_t<std::is_floating_point_v<Real>, int> = 0>
    MDXValue * GenerateValue(Real value) = delete;

    /// An empty tuple.
    [[nodiscard]] virtual MDXTuple * GenerateTuple() = 0;

    /// owner.[property]. As an axis property, it is empty for members whose level does not have the property.
    [[nodiscard]] virtual MDXMemberProperty * GenerateMemberProperty(
        KelpString const & owner, KelpString const & property) = 0;

    virtual ServerType GetServerType() const = 0;

    /// The query log. Null unless a setting names a log file and that file can be opened. The settings are read at
    /// the first call only. The log belongs to the generator.
    virtual MDXQueryLog * GetMDXQueryLog();

protected:
    /// Makes the log for GetMDXQueryLog, or returns null. The generator takes ownership.
    virtual MDXQueryLog * create_mdx_query_log() = 0;

    KelpString fCubeName;

private:
    std::unique_ptr<MDXQueryLog> fQueryLog;
    bool fQueryLogCreated = false;
};

/// Makes a generator for a cube. `cubeName` is the cube's name in MDX and is inserted into statements unchanged.
/// `flatHierarchyNames` selects the spelling of hierarchies; see MSOLAP7Field. The caller deletes the generator.
[[nodiscard]] MDX_API MDXQueryGenerator * createMSOLAP7QueryGenerator(
    KelpString const & cubeName, bool flatHierarchyNames);

MDX_EXPORTS_END
