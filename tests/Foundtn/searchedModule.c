/* A module that the tests of the profile search load from folders of their own. */
int zkSearchedModule(void);

int zkSearchedModule(void)
{
    return 1;
}
