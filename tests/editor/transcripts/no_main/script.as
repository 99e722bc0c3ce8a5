void other()
{
}
