/// \file
/// A program that only has the streams of the standard library: the limit for StartBenchmark.cpp.

#include <iostream>

int main() { std::cout << 28.2743 << '\n'; }
