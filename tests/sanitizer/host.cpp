// A host that leaks sets or, with an argument, calls unuse() once too often.
#include <odbomodule/odbomodule.h>

void leak(MDXQueryGenerator & generator)
{
    for (int i = 0; i < 10; ++i) {
        generator.GenerateSet("s")->TakeTail();
    }
}

MDXSet * make(MDXQueryGenerator & generator)
{
    return generator.GenerateSet("s");
}

void end(MDXSet * set)
{
    set->unuse();
}

void use(MDXSet * set)
{
    set->unuse();
}

int main(int count, char **)
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[Sales]", true));
    if (count == 1) {
        leak(*generator);
        return 0;
    }
    MDXSet * const set = make(*generator);
    end(set);
    use(set);
}
