// Nothing: what is compiled here are the headers that the tests share.
