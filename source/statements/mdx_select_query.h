#pragma once
#include "../ref_ptr.h"
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "mdx_query.h"

#include <cstdint>
#include <memory>
#include <vector>
class MDXField;
class MDXSet;
class MDXSingleFormulaSpecification;
class MDXTuple;
class MDXValue;

// SELECT: axes, and a WITH clause, a slicer and cell properties where they are added. Axes are added by number,
// other parts in any order, also after a text was asked for. The statement takes references on the sets, fields and
// values it is given, which may not be null; the caller keeps its own. Names and texts go in unchanged and
// unchecked.
class MDX_API MDXSelectQuery : public MDXQuery {
public:
    enum NonEmptyStatus : std::int32_t { NES_ALL = 0, NES_NON_EMPTY = 1 };

    // One axis, owned by its statement. Takes a reference on the set.
    class MDX_API MDXAxisSpecification {
    public:
        MDXAxisSpecification(
            std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties, bool nonEmpty);
        virtual ~MDXAxisSpecification();
        MDXAxisSpecification(MDXAxisSpecification const &) = delete;
        MDXAxisSpecification & operator=(MDXAxisSpecification const &) = delete;

        // NON EMPTY set DIMENSION PROPERTIES names ON axis, with a blank at its end.
        virtual KelpString getText();
        // Assigns what getText gives to `out`.
        virtual void writeText(KelpString & out);

    private:
        friend struct AxisText;

        bool fNonEmpty;
        RefPtr<MDXSet> fSet;
        std::int32_t fAxisNumber;
        std::vector<KelpString> fProperties;
    };

    explicit MDXSelectQuery(KelpString const & cubeName);

    // Throws MDX_ERR_NO_AXES without an axis, unless setQuery stored a text, and what the parts throw; the
    // statement stays as it was.
    KelpString getText(bool multiLine) const override;
    void writeText(KelpString & out) const override;

    // A calculated member and a named set for the WITH clause; see MDXMemberSpecification. Lists of different
    // lengths are an error only when the text is asked for.
    virtual void AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
        std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues);
    virtual void AddSetFormula(KelpString const & name, MDXSet * set);

    // Adds the next axis, counted from 0. Throws MDX_ERR_AXIS_OUT_OF_ORDER for another number; nothing changes
    // then.
    virtual void AddAxisSpecification(
        std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties, NonEmptyStatus status);
    // Adds a member to the WHERE clause; several stand there as one tuple.
    virtual void AddSlicerSpecification(MDXField * field);
    // Add names to the CELL PROPERTIES clause.
    virtual void AddCellProperty(KelpString const & name);
    virtual void AddCellProperties(std::vector<KelpString> const & names);
    // Puts DRILLTHROUGH before SELECT and returns true. A dialect without it does nothing and returns false.
    virtual bool SpecifyDrillThrough();
    // Stores a text, which is the whole statement from now on, whatever else is added. `text` is not changed.
    virtual void setQuery(KelpString & text);

protected:
    ~MDXSelectQuery() override;

    std::vector<std::unique_ptr<MDXSingleFormulaSpecification>> fFormulas;

private:
    std::vector<std::unique_ptr<MDXAxisSpecification>> fAxes;
    RefPtr<MDXTuple> fSlicer;
    std::vector<KelpString> fCellProperties;
    bool fDrillThrough = false;
    bool fUseStoredQuery = false;
    KelpString fStoredQuery;
};
