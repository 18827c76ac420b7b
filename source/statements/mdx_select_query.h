#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../ref_ptr.h"
#include "mdx_query.h"

#include <cstdint>
#include <memory>
#include <vector>
class MDXField;
class MDXSet;
class MDXSingleFormulaSpecification;
class MDXTuple;
class MDXValue;

MDX_EXPORTS_BEGIN

/// SELECT: axes and, if they are added, a WITH clause, a slicer and cell properties. Axes are added in the order of
/// their numbers, other parts in any order, even after the text has been asked for. The statement takes references
/// to the sets, fields and values that are added, which may not be null; the caller keeps its own references. Names
/// and texts are inserted unchanged and not checked.
class MDX_API MDXSelectQuery : public MDXQuery {
public:
    enum NonEmptyStatus : std::int32_t { NES_ALL = 0, NES_NON_EMPTY = 1 };

    /// One axis. It belongs to its statement and takes a reference to the set.
    class MDX_API MDXAxisSpecification {
    public:
        MDXAxisSpecification(
            std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties, bool nonEmpty);
        virtual ~MDXAxisSpecification();
        MDXAxisSpecification(MDXAxisSpecification const &) = delete;
        MDXAxisSpecification & operator=(MDXAxisSpecification const &) = delete;

        /// NON EMPTY set DIMENSION PROPERTIES names ON axis. The text ends in a blank.
        virtual KelpString getText();
        /// Assigns getText() to `out`.
        virtual void writeText(KelpString & out);

    private:
        friend class MDXSelectQuery;

        // The statement appends each axis to its own text, which saves a temporary string for each.
        void append_to(KelpString & text) const;

        bool fNonEmpty;
        RefPtr<MDXSet> fSet;
        std::int32_t fAxisNumber;
        std::vector<KelpString> fProperties;
    };

    explicit MDXSelectQuery(KelpString const & cubeName);

    /// Throws MDX_ERR_NO_AXES if there is no axis and no text from setQuery, and what the parts throw.
    KelpString getText(bool multiLine) const override;
    void writeText(KelpString & out) const override;

    /// Adds a calculated member to the WITH clause; see MDXMemberSpecification. If the numbers of property names
    /// and values differ, getText throws. Where two calculated members meet, the one with the higher solve order is
    /// calculated last. Without a FORMAT_STRING the server may round what it shows.
    virtual void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues);
    /// Adds a named set to the WITH clause. The server evaluates the set once, in the context of the slicer.
    virtual void AddSetFormula(KelpString const & name, MDXSet * set);

    /// Adds the next axis. `axis` counts from 0. Throws MDX_ERR_AXIS_OUT_OF_ORDER for another number; nothing
    /// changes.
    virtual void AddAxisSpecification(
        std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties, NonEmptyStatus status);
    /// Adds a member to the WHERE clause, where several members form one tuple. Two members of one hierarchy, or a
    /// member of a hierarchy that is on an axis, are an error on the server. A hierarchy that is not in the
    /// statement is at its default member.
    virtual void AddSlicerSpecification(MDXField * field);
    /// Adds a name to the CELL PROPERTIES clause.
    virtual void AddCellProperty(KelpString const & name);
    /// Adds names to the CELL PROPERTIES clause.
    virtual void AddCellProperties(std::vector<KelpString> const & names);
    /// Puts DRILLTHROUGH before SELECT and returns true. A dialect without drill-through does nothing and returns
    /// false.
    virtual bool SpecifyDrillThrough();
    /// Stores the whole statement as text. From then on getText returns this text and ignores everything else that
    /// is added. `text` is not changed.
    virtual void setQuery(KelpString & text);

protected:
    ~MDXSelectQuery() override;

    std::vector<std::unique_ptr<MDXSingleFormulaSpecification>> fFormulas;
    std::vector<std::unique_ptr<MDXAxisSpecification>> fAxes;
    RefPtr<MDXTuple> fSlicer;
    std::vector<KelpString> fCellProperties;
    bool fDrillThrough = false;
    bool fUseStoredQuery = false;
    KelpString fStoredQuery;
};

MDX_EXPORTS_END
