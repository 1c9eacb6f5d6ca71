// A library that the tests load: one function with the symbol of its name, one with that of C++.

extern "C" int fortyTwo();

int fortyTwo()
{
    return 42;
}

int fortyThree();

int fortyThree()
{
    return 43;
}
