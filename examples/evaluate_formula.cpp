// Evaluates formulas of literal texts: example_evaluate_formula FORMULA...
//
// A formula has no blanks around its operators, since a blank belongs to the text next to it.

#include <RedfishConfig/RedfishConfig.h>

#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " FORMULA...\n";
        return 2;
    }
    RedfishConfig::RedfishConfigExpression expression;
    bool allCalculated = true;
    for (int i = 1; i < argc; ++i) {
        const std::string formula = argv[i];
        std::cout << formula << "\n    ";
        try {
            std::cout << (expression.Calculate(formula) ? "true" : "false") << "\n";
        } catch (const std::string& message) { // not a std::exception
            std::cout << "cannot be calculated: " << message << "\n";
            allCalculated = false;
        }
    }
    return allCalculated ? 0 : 1;
}
