set breakpoint pending on
break MDXSet::TakeExtremity
break stop
run
# Inside the library, whose debug symbols are in a separate file.
print *this
print amount
continue
# In the host.
up
info locals
set print elements 4
print set
