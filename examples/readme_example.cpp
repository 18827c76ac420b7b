#include <odbomodule/odbomodule.h>
#include <iostream>

int main()
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[Sales]", true));
    RefPtr sales(generator->GenerateField("[Measures].[Store Sales]"));
    RefPtr key(generator->GenerateTuple());
    key->AddField(sales.get());
    RefPtr rows(generator->GenerateSet("[Store].[Country].MEMBERS"));
    rows->DrillDownOnSet("[Store].[Ireland]")->TakeExtremity(MDXSet::Top, MDXSet::Count, "10", key.get());
    RefPtr query(static_cast<MDXSelectQuery *>(generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
    query->AddAxisSpecification(0, rows.get(), {}, MDXSelectQuery::NES_NON_EMPTY);
    query->AddSlicerSpecification(sales.get());
    std::cout << query->getText(true) << "\n";
}
