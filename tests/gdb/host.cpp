// A host with an object for each pretty-printer of the library.
#include <odbomodule/memory_cube.h>

struct Report {
    KelpString name = KelpString::fromUTF8("Z\xC3\xBCrich");
    int number = 42;
};

void stop() {}

void make_objects(MDXQueryGenerator & generator)
{
    using namespace memory_cube;
    using namespace memory_cube::conditions;

    Report report;
    RefPtr<MDXSet> none;
    Condition condition = (value(mdx("a")) + 2) * mdx("b") >= 10 && !is_null(current());
    RefPtr set(generator.GenerateSet("s"));
    set->TakeExtremity(MDXSet::Top, MDXSet::Count, "10", nullptr);
    RefPtr field(generator.GenerateField("m"));
    RefPtr number(generator.GenerateValue(5));
    RefPtr tuple(generator.GenerateTuple());
    tuple->AddField(field.get())->AddField(field.get());
    RefPtr property(generator.GenerateMemberProperty("[Store].[City]", "Manager"));
    RefPtr select(static_cast<MDXSelectQuery *>(generator.GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
    select->AddMemberFormula(field.get(), number.get(), 1, {}, {});
    select->AddAxisSpecification(0, set.get(), {}, MDXSelectQuery::NES_NON_EMPTY);
    select->AddSlicerSpecification(field.get());
    select->AddCellProperty("VALUE");
    RefPtr create(static_cast<MDXCreateQuery *>(generator.GenerateQuery(MDXQuery::QT_CREATE, nullptr)));
    create->AddSetFormula("[Team]", set.get());
    RefPtr drop(static_cast<MDXDropQuery *>(generator.GenerateQuery(MDXQuery::QT_DROP, nullptr)));
    drop->AddSetToDrop("[Team]");
    MDXError error(MDX_ERR_BAD_ENUM);
    error.addInsert("9");
    error.addInsert("QueryType");
    stop();
}

int main()
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[Sales]", true));
    make_objects(*generator);
}
