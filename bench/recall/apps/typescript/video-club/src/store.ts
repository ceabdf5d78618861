interface Film {
    readonly id: number;
    title: string;
    url: string;
    price?: number;
}

class Store<T extends { id: number }> {
    private items: T[] = [];
    private observers: Array<(items: T[]) => void> = [];

    add(...items: T[]): this {
        this.items = [...this.items, ...items];
        this.observers.forEach(o => o(this.items));
        return this;
    }

    find(id: number): T | undefined {
        return this.items.filter(i => i.id === id)[0];
    }

    observe(observer: (items: T[]) => void): void {
        this.observers.push(observer);
        observer(this.items);
    }

    get length(): number { return this.items.length; }

    // Rentals of the store itself, not of the licence.
    GetRentalWindow(): number { return 48 * this.length; }
}
