// Not part of the program: every analysis must find what is wrong here, or it looks at nothing.

namespace {

int Misnamed(int number) {
    int* nowhere = 0;
    return number > 1 ? *nowhere : number;
}

} // namespace

int probe(int number) {
    return Misnamed(number);
}
