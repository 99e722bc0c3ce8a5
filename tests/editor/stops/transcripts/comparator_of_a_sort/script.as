class Item
{
    int key = 0;
    int opCmp(const Item &in other) const
    {
        return key - other.key;
    }
}

int main()
{
    Item[] items(3);
    items[0].key = 2;
    items[1].key = 1;
    items.sortAsc();
    return items[0].key;
}
