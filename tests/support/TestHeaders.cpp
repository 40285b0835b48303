// Empty on purpose: it compiles the headers that the tests share.
