// Prints statements on the cube of the folder above. scripts/test-engine runs them, and operation_uses.py says what each
// must return. `operation_uses flat` spells hierarchies flat.
#include "sales.h"

#include <string_view>

int main(int count, char ** arguments)
{
    Sales sales(count > 1 && std::string_view(arguments[1]) == "flat");
    uses_of_sets(sales);
    uses_of_conditions(sales);
    uses_of_members_and_values(sales);
    uses_of_statements(sales);
}
